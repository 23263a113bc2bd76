# How the targets of this tree are made: one function a kind of target, so that a folder's
# CMakeLists.txt says only what it holds.

find_program(QUILLA_CCACHE ccache)
if(QUILLA_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${CMAKE_COMMAND} -E env
        CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime ${QUILLA_CCACHE})
endif()

find_program(QUILLA_MOLD mold)
if(QUILLA_MOLD)
    add_link_options(-fuse-ld=mold)
endif()

include(GNUInstallDirs)

set(QUILLA_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Werror)
set(QUILLA_DEFINES QT_NO_CAST_FROM_ASCII QT_NO_CAST_TO_ASCII QT_NO_KEYWORDS QT_DISABLE_DEPRECATED_BEFORE=0x060400)

function(quilla_settle target)
    target_compile_options(${target} PRIVATE ${QUILLA_WARNINGS})
    target_compile_definitions(${target} PRIVATE ${QUILLA_DEFINES})
    target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
    if(QUILLA_SANITIZE)
        target_compile_options(${target} PRIVATE -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined)
        target_link_options(${target} PUBLIC -fsanitize=address,undefined)
    endif()
endfunction()

# A header of the same name as each of QtGui and QtWidgets, holding nothing but an #error. They come
# first on the include path of the headless targets.
function(quilla_make_traps)
    set(traps ${CMAKE_BINARY_DIR}/traps)
    foreach(module Gui Widgets PrintSupport)
        get_target_property(dirs Qt6::${module} INTERFACE_INCLUDE_DIRECTORIES)
        foreach(dir IN LISTS dirs)
            if(NOT dir MATCHES "/Qt${module}$" OR NOT EXISTS ${dir})
                continue()
            endif()
            file(GLOB headers RELATIVE ${dir} ${dir}/Q* ${dir}/q*.h)
            foreach(header IN LISTS headers)
                foreach(place ${traps}/${header} ${traps}/Qt${module}/${header})
                    if(NOT EXISTS ${place})
                        file(WRITE ${place} "#error \"a headless target must not include ${header} of Qt${module}\"\n")
                    endif()
                endforeach()
            endforeach()
        endforeach()
    endforeach()
endfunction()

# The precompiled headers: one of QtCore, one of QtWidgets; every target reuses one of the two.
function(quilla_make_precompiled)
    file(WRITE ${CMAKE_BINARY_DIR}/pch.cpp "")
    add_library(quilla_pch_core STATIC ${CMAKE_BINARY_DIR}/pch.cpp)
    quilla_settle(quilla_pch_core)
    target_link_libraries(quilla_pch_core PUBLIC Qt6::Core)
    target_precompile_headers(quilla_pch_core PRIVATE <QtCore> <algorithm> <functional> <memory> <optional> <variant> <vector>)
    add_library(quilla_pch_widgets STATIC ${CMAKE_BINARY_DIR}/pch.cpp)
    quilla_settle(quilla_pch_widgets)
    target_link_libraries(quilla_pch_widgets PUBLIC Qt6::Widgets)
    target_precompile_headers(quilla_pch_widgets PRIVATE <QtCore> <QtGui> <QtWidgets> <algorithm> <functional> <memory> <optional> <variant> <vector>)
    set_target_properties(quilla_pch_core quilla_pch_widgets PROPERTIES AUTOMOC OFF)
endfunction()

# quilla_headless(NAME SOURCES a.cpp ... LINKS other ...): QtCore only, guarded by the traps.
function(quilla_headless target)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${target} STATIC ${arg_SOURCES})
    quilla_settle(${target})
    target_include_directories(${target} BEFORE PRIVATE ${CMAKE_BINARY_DIR}/traps)
    target_link_libraries(${target} PUBLIC Qt6::Core ${arg_LINKS})
    target_precompile_headers(${target} REUSE_FROM quilla_pch_core)
    set_property(GLOBAL APPEND PROPERTY QUILLA_HEADLESS ${target})
endfunction()

# quilla_screens(NAME SOURCES a.cpp ... LINKS other ...): may use QtWidgets.
function(quilla_screens target)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_library(${target} STATIC ${arg_SOURCES})
    quilla_settle(${target})
    target_link_libraries(${target} PUBLIC Qt6::Widgets ${arg_LINKS})
    target_precompile_headers(${target} REUSE_FROM quilla_pch_widgets)
endfunction()

# quilla_program(NAME): is built and installed by the package. Programs lie in one folder of their own, beside what
# they read at run time, and are called by links; packaging/man/NAME.1 is the manual page.
function(quilla_program target)
    add_dependencies(quilla_programs ${target})
    set(folder ${CMAKE_INSTALL_LIBEXECDIR}/quilla)
    install(TARGETS ${target} RUNTIME DESTINATION ${folder})
    set(links ${CMAKE_BINARY_DIR}/links)
    file(MAKE_DIRECTORY ${links})
    file(CREATE_LINK ../${folder}/${target} ${links}/${target} SYMBOLIC)
    install(FILES ${links}/${target} DESTINATION ${CMAKE_INSTALL_BINDIR})
    install(FILES ${CMAKE_SOURCE_DIR}/packaging/man/${target}.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
endfunction()

# quilla_test(NAME SOURCES a.cpp ... LINKS other ...): one Qt Test executable, run by ctest without a screen.
function(quilla_test target)
    cmake_parse_arguments(arg "" "" "SOURCES;LINKS" ${ARGN})
    add_executable(${target} ${arg_SOURCES})
    quilla_settle(${target})
    target_include_directories(${target} PRIVATE ${CMAKE_SOURCE_DIR}/tests ${CMAKE_SOURCE_DIR} ${CMAKE_BINARY_DIR}/generated)
    target_link_libraries(${target} PRIVATE Qt6::Test ${arg_LINKS})
    add_test(NAME ${target} COMMAND ${target})
    set_tests_properties(${target} PROPERTIES TIMEOUT 300
        ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=Asia/Shanghai;LANG=C.UTF-8")
endfunction()

# quilla_needs_postgres(TEST ...): these run on a private PostgreSQL that ctest starts before them and stops
# after the last one. A run by hand needs tests/postgres/start.sh before it.
function(quilla_needs_postgres)
    set(socket ${CMAKE_BINARY_DIR}/postgres-socket)
    get_property(started GLOBAL PROPERTY QUILLA_POSTGRES)
    if(NOT started)
        set_property(GLOBAL PROPERTY QUILLA_POSTGRES ON)
        add_test(NAME postgres_start COMMAND ${CMAKE_SOURCE_DIR}/tests/postgres/start.sh ${socket})
        add_test(NAME postgres_stop COMMAND ${CMAKE_SOURCE_DIR}/tests/postgres/stop.sh ${socket})
        set_tests_properties(postgres_start PROPERTIES FIXTURES_SETUP postgres TIMEOUT 120)
        set_tests_properties(postgres_stop PROPERTIES FIXTURES_CLEANUP postgres TIMEOUT 60)
    endif()
    foreach(test IN LISTS ARGN)
        set_tests_properties(${test} PROPERTIES FIXTURES_REQUIRED postgres)
    endforeach()
endfunction()

# quilla_also_on_postgres(TEST ...): these run a second time with their libraries on the private PostgreSQL.
function(quilla_also_on_postgres)
    foreach(test IN LISTS ARGN)
        add_test(NAME ${test}_postgres COMMAND ${test})
        set_tests_properties(${test}_postgres PROPERTIES TIMEOUT 600
            ENVIRONMENT "QT_QPA_PLATFORM=offscreen;TZ=Asia/Shanghai;LANG=C.UTF-8;QUILLA_TEST_ENGINE=postgres")
        quilla_needs_postgres(${test}_postgres)
    endforeach()
endfunction()

# Walks what a target links, down to the last library.
function(quilla_link_closure target out)
    set(seen "")
    set(queue ${target})
    while(queue)
        list(POP_FRONT queue next)
        if(next IN_LIST seen)
            continue()
        endif()
        list(APPEND seen ${next})
        if(TARGET ${next})
            get_target_property(links ${next} INTERFACE_LINK_LIBRARIES)
            if(links)
                list(APPEND queue ${links})
            endif()
        endif()
    endwhile()
    set(${out} "${seen}" PARENT_SCOPE)
endfunction()

# The layer guard: no headless target reaches QtGui or QtWidgets by a link, and the sources keep the
# rules that no compiler knows (checked at each build by cmake/check-layers.sh).
function(quilla_check_layers)
    get_property(targets GLOBAL PROPERTY QUILLA_HEADLESS)
    foreach(target IN LISTS targets)
        quilla_link_closure(${target} closure)
        foreach(forbidden Qt6::Gui Qt6::Widgets Qt6::PrintSupport)
            if(forbidden IN_LIST closure)
                message(FATAL_ERROR "${target} is headless and must not link ${forbidden}")
            endif()
        endforeach()
    endforeach()
    add_custom_target(quilla_layers ALL COMMAND ${CMAKE_SOURCE_DIR}/cmake/check-layers.sh ${CMAKE_SOURCE_DIR}/src
        COMMENT "Checking the layers" VERBATIM)
endfunction()
