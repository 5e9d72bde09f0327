# SPDX-License-Identifier: MIT
vexa_add_test(catalog/contentcrash TIMEOUT 600)
vexa_add_test(catalog/contentfile)
vexa_add_test(catalog/contentwriting)
vexa_add_test(catalog/damagedxml TIMEOUT 900)
vexa_add_test(catalog/localizationtools)
vexa_add_test(catalog/longfiles TIMEOUT 600)
vexa_add_test(catalog/mapcatalog)
vexa_add_test(catalog/mapcatalogcommands LIBRARIES vexa_fakesystem)
# 10,000 tiles are written twice and hashed several times.
vexa_add_test(catalog/mapcatalogdatasetflow TIMEOUT 600 LIBRARIES vexa_fakesystem)
vexa_add_test(catalog/mapcatalogdatasetreentrancy TIMEOUT 900 LIBRARIES vexa_fakesystem)
vexa_add_test(catalog/mapcatalogdatasets LIBRARIES vexa_fakesystem)
vexa_add_test(catalog/mapcataloginstall)
vexa_add_test(catalog/mapcatalogprocessor)
# Every step is tried in every pass of the event loop.
vexa_add_test(catalog/mapcatalogreentrancy TIMEOUT 900)
vexa_add_test(catalog/mapcatalogswap LIBRARIES vexa_fakesystem)
vexa_add_test(catalog/mapregion)
