#!/bin/sh
# What scripts/test-platforms runs in its chroot for a platform: /src is built, with warnings as errors, and the C++ tests run.
set -eu
# Under qemu a process with several threads hangs when it forks, whoever calls fork: these tests start viewers from threads.
# Where processes are limited, the thread that qemu itself starts in a child is what is refused.
forking='DetachedStartWithoutProcesses|DetachedStart\.(OutcomesAndNoZombie|SameOutcomes|ThreadsThatSpawn|BareNames)|ReaderStart\.CommandLines'
case $1 in
  arm64) processor=aarch64 compiler=aarch64-linux-gnu libraries=aarch64-linux-gnu left_out=$forking ;;
  # All that is done with sockets is one system call there, so that none of it can be refused alone.
  i386) processor=i686 compiler=i686-linux-gnu libraries=i386-linux-gnu left_out='UrlProbe\.WhatTheSystemRefusesIsNamed' ;;
  s390x) processor=s390x compiler=s390x-linux-gnu libraries=s390x-linux-gnu left_out=$forking ;;
esac
build=/build/$1
mkdir -p "$build"
export PKG_CONFIG_LIBDIR=/usr/lib/$libraries/pkgconfig:/usr/share/pkgconfig
{ cmake -S /src -B "$build" -G Ninja -DCMAKE_SYSTEM_NAME=Linux -DCMAKE_SYSTEM_PROCESSOR=$processor \
    -DCMAKE_C_COMPILER=$compiler-gcc -DCMAKE_CXX_COMPILER=$compiler-g++ -DCMAKE_BUILD_TYPE=None -DCMAKE_C_FLAGS=-O2 -DCMAKE_CXX_FLAGS=-O2 \
    -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=16 -DOLH_QUICK_TOOLS=ON -DOLH_TEST_SECONDS=600 \
    -DCMAKE_COMPILE_WARNING_AS_ERROR=ON &&
  cmake --build "$build" -- -k 0; } >"$build/build.log" 2>&1 || { grep -E 'error|FAILED' "$build/build.log"; exit 1; }
ctest --test-dir "$build" -R '^test_' -E "$left_out" -j "$(nproc)" --output-on-failure >"$build/tests.log" 2>&1 ||
  { sed -n '/^The following tests FAILED:/,$p' "$build/tests.log"; exit 1; }
grep 'tests passed' "$build/tests.log"
