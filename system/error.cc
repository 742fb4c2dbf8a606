#include "system/error.h"

#include <new>

namespace scrivo {

Error ErrorFrom(const std::exception_ptr& failure) noexcept {
  try {
    std::rethrow_exception(failure);
  } catch (const Error& error) {
    return error;
  } catch (const std::bad_alloc&) {
    return Error(kOutOfMemory, "", "Out of memory");
  } catch (const std::exception& other) {
    return Error(kInternalError, "", other.what());
  } catch (...) {
    return Error(kInternalError, "", "Internal error");
  }
}

}  // namespace scrivo
