# SPDX-License-Identifier: MIT
# What the pages in doc/ say is run, read and compared here, straight from the pages.
vexa_add_test(doc/qmlsnippets)
target_compile_definitions(tst_qmlsnippets PRIVATE VEXA_DOC_DIR="${PROJECT_SOURCE_DIR}/doc")
