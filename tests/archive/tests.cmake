# SPDX-License-Identifier: MIT
vexa_add_test(archive/vexaarchive)
