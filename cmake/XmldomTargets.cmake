# How every target of this project is compiled.

set(XMLDOM_SANITIZE_FLAGS "")
if(XMLDOM_SANITIZE)
  list(JOIN XMLDOM_SANITIZE "," sanitizers)
  set(XMLDOM_SANITIZE_FLAGS -fsanitize=${sanitizers} -fno-omit-frame-pointer)
  if("undefined" IN_LIST XMLDOM_SANITIZE)
    # A null `this` is tested by the library itself, so it has to get that far. The address
    # sanitizer's own checks still see every other null access.
    list(APPEND XMLDOM_SANITIZE_FLAGS -fno-sanitize=null,vptr -fno-sanitize-recover=undefined)
  endif()
  if("integer" IN_LIST XMLDOM_SANITIZE)
    # Programs that were built without the sanitizer load these libraries, which therefore bring its
    # runtime with them, from the compiler's own folder.
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-runtime-dir
      OUTPUT_VARIABLE runtime_folder OUTPUT_STRIP_TRAILING_WHITESPACE)
    list(APPEND CMAKE_BUILD_RPATH ${runtime_folder})
    list(APPEND XMLDOM_SANITIZE_FLAGS -fno-sanitize-recover=all -shared-libsan)
  endif()
endif()

# Lets a target that is installed be the same, byte by byte, wherever and whenever it is built: in
# messages of assertions and in debugging information, sources have the names that they have in the
# project, and the folder of the build is not in the path where libraries are searched. A debug build
# keeps the full names for debuggers.
function(xmldom_reproducible target)
  target_compile_options(${target} PRIVATE
    -fmacro-prefix-map=${PROJECT_SOURCE_DIR}=.
    $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}=.>
    $<$<NOT:$<CONFIG:Debug>>:-ffile-prefix-map=${PROJECT_BINARY_DIR}=./build>)
  set_target_properties(${target} PROPERTIES BUILD_RPATH_USE_ORIGIN ON)
endfunction()

# Sets the language level, the warnings and what the interface of the library depends on:
# assertions stay in every build type, and a null `this` reaches them.
function(xmldom_compile_options target)
  # Exactly this level, also where a compiler begins at a later one: C++17 has dropped the dynamic
  # exception specifications that the library has.
  set_target_properties(${target} PROPERTIES
    CXX_STANDARD 14
    CXX_STANDARD_REQUIRED ON
    CXX_EXTENSIONS OFF
    CXX_VISIBILITY_PRESET hidden
    VISIBILITY_INLINES_HIDDEN ON)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wpedantic -Wshadow
    $<$<BOOL:${CMAKE_COMPILE_WARNING_AS_ERROR}>:-Werror>  # CMake adds it itself from 3.24 on
    -UNDEBUG -fno-delete-null-pointer-checks
    ${XMLDOM_SANITIZE_FLAGS})
  target_link_options(${target} PRIVATE ${XMLDOM_SANITIZE_FLAGS})
  # Where a long has 32 bits, files may still be larger, have higher numbers and later dates.
  if(CMAKE_SIZEOF_VOID_P EQUAL 4)
    target_compile_definitions(${target} PRIVATE _FILE_OFFSET_BITS=64 _TIME_BITS=64)
  endif()
endfunction()
