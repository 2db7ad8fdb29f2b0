#include "failing_allocator.h"

#include <cstdlib>
#include <cstring>
#include <new>

namespace {

long allowed = -1;
long refused = 0;
long asked = 0;

bool may_allocate() {
  ++asked;
  return allowed < 0 || asked <= allowed || asked > allowed + refused;
}

}  // namespace

namespace olh_test {

void fail_allocations_after(long successes, long failures) {
  allowed = successes;
  refused = failures;
  asked = 0;
}

long allocations_asked() { return asked; }

}  // namespace olh_test

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* block, std::size_t size);
char* __real_strdup(const char* text);

void* __wrap_malloc(std::size_t size) { return may_allocate() ? __real_malloc(size) : nullptr; }
void* __wrap_calloc(std::size_t count, std::size_t size) {
  return may_allocate() ? __real_calloc(count, size) : nullptr;
}
void* __wrap_realloc(void* block, std::size_t size) { return may_allocate() ? __real_realloc(block, size) : nullptr; }
char* __wrap_strdup(const char* text) { return may_allocate() ? __real_strdup(text) : nullptr; }
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
  return may_allocate() ? __real_malloc(size > 0 ? size : 1) : nullptr;
}
void* operator new(std::size_t size) {
  void* block = operator new(size, std::nothrow);
  if (block == nullptr) throw std::bad_alloc();
  return block;
}
void operator delete(void* block) noexcept { std::free(block); }
void operator delete(void* block, std::size_t) noexcept { std::free(block); }
