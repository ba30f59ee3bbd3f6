#!/bin/sh
# Runs the tests of the NEON kernels under an emulator, with the Debian packages that ./dev neon installs:
#   cmake/test-neon.sh BUILD_DIR
set -eu
cd "$(dirname "$0")/.."
build=${1:?usage: cmake/test-neon.sh BUILD_DIR}
googletest=/usr/src/googletest/googletest
mkdir -p "$build/include/LumoApi"
ln -sf "$PWD"/platform/*.h "$PWD"/platform/*/*.h "$build/include/LumoApi"

# Linked statically, the program needs no libraries of that machine; only the project's own files are held to
# its warnings.
aarch64-linux-gnu-g++ -std=c++20 -O1 -c -I "$googletest/include" -I "$googletest" \
  "$googletest/src/gtest-all.cc" -o "$build/gtest-all.o"
aarch64-linux-gnu-g++ -std=c++20 -O1 -c -I "$googletest/include" -I "$googletest" \
  "$googletest/src/gtest_main.cc" -o "$build/gtest_main.o"
aarch64-linux-gnu-g++ -std=c++20 -O2 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror -static \
  -I . -I "$build/include" -isystem "$googletest/include" platform/kernels/*.cpp platform/text/Base64.cpp platform/values/Data.cpp \
  platform/text/PercentEncoding.cpp platform/text/Text.cpp tests/platform/KernelsTest.cpp \
  "$build/gtest-all.o" "$build/gtest_main.o" -o "$build/kernels_tests"
qemu-aarch64 "$build/kernels_tests"
