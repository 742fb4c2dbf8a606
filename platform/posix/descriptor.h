#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <utility>

namespace scrivo {

// Owns a file descriptor; -1 is none.
class Descriptor {
 public:
  explicit Descriptor(int number = -1) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(other.Release()) {}
  Descriptor& operator=(Descriptor&& other) noexcept {
    if (this != &other) {
      Close();
      number_ = other.Release();
    }
    return *this;
  }
  ~Descriptor() { Close(); }

  int get() const { return number_; }
  int Release() { return std::exchange(number_, -1); }
  // Closes it; false when the system reports that earlier writes were lost.
  bool Close() { return number_ == -1 || close(Release()) == 0; }

 private:
  int number_;
};

// The same file under a number above those of the standard streams, so that setting up a child's
// streams cannot overwrite it; none when that fails.
inline Descriptor AboveStandardStreams(Descriptor descriptor) {
  if (descriptor.get() == -1 || descriptor.get() > STDERR_FILENO) return descriptor;
  return Descriptor(fcntl(descriptor.get(), F_DUPFD_CLOEXEC, STDERR_FILENO + 1));
}

}  // namespace scrivo
