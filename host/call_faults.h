#pragma once

#include <functional>
#include <string>

namespace scrivo::host {

// Lets calls into the host's objects fail on purpose, so that a test sees what an add-in makes of
// a host that refuses.
class CallFaults {
 public:
  // From now on every n-th call fails; 0: none does. Counts anew.
  void FailEvery(long n);
  // From now on the n-th call (from 1) fails, and no other. Counts anew.
  void FailOnly(long n);
  // Calls counted so far.
  long calls() const { return calls_; }
  // Called for each call with the class and name of the member; empty: nobody listens.
  std::function<void(const std::string& member)> listener;

  // Counts one call. Throws Error when it is one that fails.
  void Count(const std::string& member);

 private:
  long calls_ = 0;
  long every_ = 0;
  long only_ = 0;
};

}  // namespace scrivo::host
