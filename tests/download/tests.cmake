# SPDX-License-Identifier: MIT
vexa_add_test(download/request)
vexa_add_test(download/download)
vexa_add_test(download/requestqueue)
vexa_add_test(download/requestqueuethreads)
vexa_add_test(download/requestqueuerestore)
