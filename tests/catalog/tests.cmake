# SPDX-License-Identifier: MIT
vexa_add_test(catalog/contentcrash TIMEOUT 600)
vexa_add_test(catalog/contentfile)
vexa_add_test(catalog/damagedxml TIMEOUT 900)
vexa_add_test(catalog/localizationtools)
vexa_add_test(catalog/mapcatalog)
vexa_add_test(catalog/mapcataloginstall)
vexa_add_test(catalog/mapcatalogprocessor)
# Every step is tried in every pass of the event loop.
vexa_add_test(catalog/mapcatalogreentrancy TIMEOUT 900)
vexa_add_test(catalog/mapregion)
