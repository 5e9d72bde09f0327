# SPDX-License-Identifier: MIT
vexa_add_test(catalog/contentfile)
vexa_add_test(catalog/localizationtools)
vexa_add_test(catalog/mapcatalog)
vexa_add_test(catalog/mapcataloginstall)
vexa_add_test(catalog/mapcatalogprocessor)
vexa_add_test(catalog/mapregion)
