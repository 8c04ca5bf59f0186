# Cross-compiling the same 64-bit Windows program with Clang and lld instead
# of GCC: the MinGW-w64 headers, import libraries and C runtime are the same
# ones, and so is GCC's C++ library (libstdc++ of the posix thread model),
# which Clang does not find by itself in Debian's layout.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(TOOLCHAIN_PREFIX x86_64-w64-mingw32)
set(CMAKE_C_COMPILER   clang)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_C_COMPILER_TARGET   ${TOOLCHAIN_PREFIX})
set(CMAKE_CXX_COMPILER_TARGET ${TOOLCHAIN_PREFIX})
set(CMAKE_RC_COMPILER  ${TOOLCHAIN_PREFIX}-windres)
set(ORIEL_WIDL         ${TOOLCHAIN_PREFIX}-widl)
set(CMAKE_SYSROOT /usr/${TOOLCHAIN_PREFIX})

# GCC's own folder for this target: libstdc++'s headers and libgcc live there.
execute_process(COMMAND ${TOOLCHAIN_PREFIX}-g++-posix -print-libgcc-file-name
  OUTPUT_VARIABLE _oriel_libgcc OUTPUT_STRIP_TRAILING_WHITESPACE)
get_filename_component(_oriel_gcc_dir "${_oriel_libgcc}" DIRECTORY)
set(_oriel_cxx_inc ${_oriel_gcc_dir}/include/c++)
set(CMAKE_CXX_FLAGS_INIT
  "-isystem ${_oriel_cxx_inc} -isystem ${_oriel_cxx_inc}/${TOOLCHAIN_PREFIX} -isystem ${_oriel_cxx_inc}/backward")
# libstdc++ of the posix thread model calls winpthreads, which GCC's driver
# links by itself and Clang's does not (lld takes archives in any order).
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT "-fuse-ld=lld -L${_oriel_gcc_dir} -lpthread")
endforeach()

set(CMAKE_FIND_ROOT_PATH /usr/${TOOLCHAIN_PREFIX})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)

set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run)
