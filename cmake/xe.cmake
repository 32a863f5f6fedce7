# What every target of the house shares: warnings, sanitizers, the include root, the test harness.

add_library(xe_options INTERFACE)
target_include_directories(xe_options INTERFACE ${PROJECT_SOURCE_DIR})
target_compile_options(xe_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Werror)
target_compile_definitions(xe_options INTERFACE QT_NO_CAST_FROM_ASCII QT_NO_KEYWORDS)
# Qt compares and copies empty ranges by null pointers, which is no fault of ours.
if(XE_SANITIZE OR XE_FUZZ)
    target_compile_options(xe_options INTERFACE -fsanitize=address,undefined -fno-sanitize=nonnull-attribute -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(xe_options INTERFACE -fsanitize=address,undefined)
endif()
if(XE_FUZZ)
    target_compile_options(xe_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# xe_module(NAME SOURCES a.cpp ... LINKS xe_other ...): one folder's library; LINKS says whom it may know.
function(xe_module name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC xe_options ${ARG_LINKS})
endfunction()

# xe_test(NAME SOURCES a.cpp ... LINKS xe_other ...): one QtTest program, run by ctest.
function(xe_test name)
    cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${name} ${ARG_SOURCES})
    target_link_libraries(${name} PRIVATE xe_options Qt6::Test ${ARG_LINKS})
    set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/tests)
    add_test(NAME ${name} COMMAND ${name})
    set_tests_properties(${name} PROPERTIES TIMEOUT 600)
endfunction()

# QScintilla ships no CMake package; find its header and library beside Qt's own.
macro(xe_find_qscintilla)
    get_target_property(_qt_includes Qt6::Core INTERFACE_INCLUDE_DIRECTORIES)
    find_path(QSCINTILLA_INCLUDE Qsci/qsciscintilla.h HINTS ${_qt_includes} PATH_SUFFIXES qt6 REQUIRED)
    find_library(QSCINTILLA_LIBRARY NAMES qscintilla2_qt6 REQUIRED)
    add_library(xe_qscintilla INTERFACE)
    target_include_directories(xe_qscintilla SYSTEM INTERFACE ${QSCINTILLA_INCLUDE})
    target_link_libraries(xe_qscintilla INTERFACE ${QSCINTILLA_LIBRARY} Qt6::Widgets)
endmacro()
