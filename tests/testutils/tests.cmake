# SPDX-License-Identifier: MIT
vexa_add_test(testutils/childprogram)
vexa_add_test(testutils/httptestserver)
vexa_add_test(testutils/nginxserver)
