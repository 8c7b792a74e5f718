# The stand-in host's Add, Modify and Help dialogs of its actions editor. Included from
# this folder's CMakeLists; defines only the target nv_standin_dialogs.
add_library(nv_standin_dialogs STATIC ${CMAKE_CURRENT_LIST_DIR}/ActionDialogs.cpp)
target_include_directories(nv_standin_dialogs PUBLIC ${PROJECT_SOURCE_DIR})
target_link_libraries(nv_standin_dialogs PUBLIC nv_common PRIVATE user32 gdi32 comctl32)
nv_warnings(nv_standin_dialogs)
