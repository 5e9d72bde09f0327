# SPDX-License-Identifier: MIT
# What the store of maps promises under faults: each program goes through a list of faults, checks
# every outcome and writes them down as a table. Their long forms: tests/reliability/run --long
if(NOT VEXA_BUILD_HOST)
    return()
endif()
