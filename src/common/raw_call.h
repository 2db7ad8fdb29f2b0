// System calls made without the C library.
//
// Knows    how a call is made so that nothing else happens: no errno (a child shares it with the thread that started it),
//          no lock, no cancellation, no symbol bound at its first use.
// Not      what the calls are for.
// For      children, and the thread that waits for them.
#ifndef OLH_COMMON_RAW_CALL_H
#define OLH_COMMON_RAW_CALL_H

#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <type_traits>

namespace olh {

// Whether a child may share the host's memory: the calls touch none of it here, and no sanitizer looks on.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OLH_UNDER_A_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define OLH_UNDER_A_SANITIZER 1
#endif
#endif
#if !defined(OLH_UNDER_A_SANITIZER) && ((defined(__x86_64__) && defined(__LP64__)) || defined(__aarch64__))
inline constexpr bool kMayShareMemory = true;
#else
inline constexpr bool kMayShareMemory = false;
#endif

namespace raw {

template <class T>
long word_of(T value) noexcept {
  if constexpr (std::is_pointer_v<T>)
    return reinterpret_cast<long>(value);
  else
    return static_cast<long>(value);
}

inline long call(long number, long a, long b, long c, long d, long e) noexcept {
#if defined(__x86_64__) && defined(__LP64__)
  register long r10 __asm__("r10") = d;
  register long r8 __asm__("r8") = e;
  __asm__ volatile("syscall" : "+a"(number) : "D"(a), "S"(b), "d"(c), "r"(r10), "r"(r8) : "rcx", "r11", "memory");
  return number;
#elif defined(__aarch64__)
  register long x8 __asm__("x8") = number;
  register long x0 __asm__("x0") = a;
  register long x1 __asm__("x1") = b;
  register long x2 __asm__("x2") = c;
  register long x3 __asm__("x3") = d;
  register long x4 __asm__("x4") = e;
  __asm__ volatile("svc #0" : "+r"(x0) : "r"(x8), "r"(x1), "r"(x2), "r"(x3), "r"(x4) : "memory");
  return x0;
#else
  const long result = syscall(number, a, b, c, d, e);
  return result == -1 ? -errno : result;
#endif
}

}  // namespace raw

// Makes the call. Returns its result, or the negative number of its error.
template <class A = int, class B = int, class C = int, class D = int, class E = int>
long raw_call(long number, A a = 0, B b = 0, C c = 0, D d = 0, E e = 0) noexcept {
  return raw::call(number, raw::word_of(a), raw::word_of(b), raw::word_of(c), raw::word_of(d), raw::word_of(e));
}

}  // namespace olh

#endif
