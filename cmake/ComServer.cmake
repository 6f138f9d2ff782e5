# Pieces that every COM server of the project is built from.

set(TAVIO_WINE_INCLUDE /usr/include/wine/wine/windows CACHE PATH "Folder of oaidl.idl")
set(TAVIO_WINE_TYPELIBS /usr/lib/x86_64-linux-gnu/wine/x86_64-windows CACHE PATH "Folder of stdole2.tlb")

# tavio_idl(<name> <file.idl>): an interface library <name> with <file>.h and <file>.tlb.
# Descriptions in a type library are in the system's code page, the Chinese one, which the compiler does not convert to.
# The compiler's output declares reserved names (_Message) and unused statics, so its folder is a system one. It also
# carries the source's path and the time, which are kept the same in every build.
function(tavio_idl name idl)
  get_filename_component(stem ${idl} NAME_WE)
  set(out ${CMAKE_BINARY_DIR}/idl)
  file(MAKE_DIRECTORY ${out})
  set(widl ${CMAKE_COMMAND} -E env WIDL_TIME_OVERRIDE=0 ${TAVIO_WIDL})
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    set(bits --win32)
  else()
    set(bits --win64)
  endif()
  add_custom_command(
    OUTPUT ${out}/${stem}.h ${out}/${stem}.tlb
    COMMAND iconv -f UTF-8 -t GBK -o ${stem}.idl ${CMAKE_CURRENT_SOURCE_DIR}/${idl}
    COMMAND ${widl} ${bits} -I ${TAVIO_WINE_INCLUDE} -h -o ${stem}.h ${stem}.idl
    COMMAND ${widl} ${bits} -I ${TAVIO_WINE_INCLUDE} -L ${TAVIO_WINE_TYPELIBS} -t -o ${stem}.tlb ${stem}.idl
    DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/${idl}
    WORKING_DIRECTORY ${out}
    COMMENT "widl ${idl}")
  add_custom_target(${name}_files DEPENDS ${out}/${stem}.h ${out}/${stem}.tlb)
  add_library(${name} INTERFACE)
  target_include_directories(${name} SYSTEM INTERFACE ${out})
  add_dependencies(${name} ${name}_files)
endfunction()

# tavio_server(<target> DESCRIPTION <text> [TYPELIB <stem>] SOURCES <files>): a self-registering in-process server.
function(tavio_server target)
  cmake_parse_arguments(ARG "" "DESCRIPTION;TYPELIB" "SOURCES" ${ARGN})
  set(SERVER_FILE ${target}.dll)
  set(SERVER_TYPE VFT_DLL)
  set(SERVER_DESCRIPTION ${ARG_DESCRIPTION})
  set(SERVER_TYPELIB "")
  if(ARG_TYPELIB)
    set(SERVER_TYPELIB "1 TYPELIB \"${CMAKE_BINARY_DIR}/idl/${ARG_TYPELIB}.tlb\"")
  endif()
  configure_file(${CMAKE_SOURCE_DIR}/cmake/server.rc.in ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc @ONLY)
  if(ARG_TYPELIB)
    set_source_files_properties(${CMAKE_CURRENT_BINARY_DIR}/${target}.rc PROPERTIES
      OBJECT_DEPENDS ${CMAKE_BINARY_DIR}/idl/${ARG_TYPELIB}.tlb)
  endif()
  # The exports must be objects of the DLL itself.
  add_library(${target} SHARED ${ARG_SOURCES} ${CMAKE_SOURCE_DIR}/src/com/server/Exports.cpp
    ${CMAKE_SOURCE_DIR}/src/com/server/exports.def ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  set_target_properties(${target} PROPERTIES PREFIX "")
  tavio_precompiled(${target})
  target_link_libraries(${target} PRIVATE server)
  if(MINGW)
    # The exports carry plain names on x86 too, where the functions themselves are decorated.
    target_link_options(${target} PRIVATE -Wl,--enable-stdcall-fixup)
  endif()
endfunction()
