#pragma once

#include <string>

#include "host/host_error.h"

namespace scrivo::host {

// Lets calls into the host's objects fail on purpose, so that a test sees what an add-in makes of
// a host that refuses. A world's before_call hands each call on to Count.
class CallFaults {
 public:
  // From now on every n-th call fails; 0: none does. Counts anew.
  void FailEvery(long n) {
    every_ = n;
    only_ = calls_ = 0;
  }
  // From now on the n-th call (from 1) fails, and no other. Counts anew.
  void FailOnly(long n) {
    only_ = n;
    every_ = calls_ = 0;
  }
  // Calls counted so far.
  long Calls() const { return calls_; }

  // Counts one call. Throws Error when it is one that fails.
  void Count(const std::string& member) {
    ++calls_;
    if ((every_ > 0 && calls_ % every_ == 0) || (only_ > 0 && calls_ == only_)) {
      throw HostError("The host refuses " + member + ".");
    }
  }

 private:
  long calls_ = 0;
  long every_ = 0;
  long only_ = 0;
};

}  // namespace scrivo::host
