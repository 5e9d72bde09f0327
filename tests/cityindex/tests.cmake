# SPDX-License-Identifier: MIT
vexa_add_test(cityindex/cityindex)
vexa_add_test(cityindex/cityindexcrash TIMEOUT 600)
vexa_add_test(cityindex/cityindexlist)
vexa_add_test(cityindex/cityindexqml)
vexa_add_test(cityindex/cityindexreading TIMEOUT 600)
vexa_add_test(cityindex/cityindexreentrancy)
vexa_add_test(cityindex/cityindexwriting)
