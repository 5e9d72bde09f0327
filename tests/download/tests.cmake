# SPDX-License-Identifier: MIT
vexa_add_test(download/request)
vexa_add_test(download/download)
