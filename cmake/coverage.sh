#!/bin/sh
# Tells what of each layer its own tests run, and fails where that is too little:
#   cmake/coverage.sh BUILD_DIR
set -eu
cd "$(dirname "$0")/.."
build=${1:?usage: cmake/coverage.sh BUILD_DIR}
find "$build" -name '*.gcda' -delete
ctest --preset coverage

# Vector code counts where the processor has its instructions; elsewhere nothing can run it.
set --
grep -qw avx2 /proc/cpuinfo || set -- --exclude platform/kernels/AVX2.cpp --exclude platform/kernels/Vector.h
grep -qw avx512_vbmi2 /proc/cpuinfo || set -- "$@" --exclude platform/kernels/AVX512.cpp

# Branches to the clean-up after an exception are the compiler's, not ours.
mkdir -p "$build/report"
gcovr --root . --filter LumoApi/ --filter model/ --filter platform/ "$@" \
  --exclude-throw-branches --exclude-unreachable-branches --fail-under-line 95 --fail-under-branch 85 \
  --txt --print-summary --html-details "$build/report/index.html" "$build"
