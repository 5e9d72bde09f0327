# SPDX-License-Identifier: MIT
vexa_add_test(testutils/childprogram)
vexa_add_test(testutils/httptestserver LABELS stress)
vexa_add_test(testutils/nginxserver)
vexa_add_test(testutils/reporttable)
