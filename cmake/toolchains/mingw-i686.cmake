# 32-bit Windows with mingw-w64. Its test programs need a 32-bit Wine; where there is none,
# the build still happens and the test preset is not run.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(NV_MINGW_TRIPLET i686-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
