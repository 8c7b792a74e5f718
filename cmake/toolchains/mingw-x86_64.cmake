# 64-bit Windows with mingw-w64; test programs run under wine.
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(NV_MINGW_TRIPLET x86_64-w64-mingw32)
include(${CMAKE_CURRENT_LIST_DIR}/mingw-common.cmake)
