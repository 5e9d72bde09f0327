# SPDX-License-Identifier: MIT
vexa_add_test(archive/vexaarchive)
vexa_add_test(archive/archivecancel)
vexa_add_test(archive/archivecontained)
vexa_add_test(archive/archivefailures)
vexa_add_test(archive/archivefaults LIBRARIES LibArchive::LibArchive ${CMAKE_DL_LIBS})
vexa_add_test(archive/archivegzip)
vexa_add_test(archive/archivenames)
vexa_add_test(archive/archiveprogress)
