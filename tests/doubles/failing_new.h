#pragma once

// An operator new that can be made to fail. It replaces that of the whole program, so one file of a
// test program includes this.

#include <cstddef>
#include <cstdlib>
#include <new>

namespace scrivo {

// How many allocations of this program succeed before one fails; negative when none is to fail.
inline long allocations_before_failure = -1;

}  // namespace scrivo

void* operator new(std::size_t size) {
  if (scrivo::allocations_before_failure >= 0 && scrivo::allocations_before_failure-- == 0) {
    throw std::bad_alloc();
  }
  if (void* memory = std::malloc(size == 0 ? 1 : size)) return memory;
  throw std::bad_alloc();
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
