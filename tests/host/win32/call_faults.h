#pragma once

#include <string>
#include <vector>

#include "host/session.h"
#include "host/win32/host_world.h"

namespace scrivo::host {

// Lets calls into the host's objects fail on purpose, so that a test sees what an add-in makes of
// a host that refuses. It listens to one world, for as long as it lives.
class CallFaults {
 public:
  explicit CallFaults(HostWorld& world) : world_(world) {
    world_.before_call = [this](const std::string& member) { Count(member); };
  }
  ~CallFaults() { world_.before_call = nullptr; }
  CallFaults(const CallFaults&) = delete;
  CallFaults& operator=(const CallFaults&) = delete;

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

  // The members called so far, "Class.Member".
  const std::vector<std::string>& Members() const { return members_; }

 private:
  void Count(const std::string& member) {
    ++calls_;
    members_.push_back(member);
    if ((every_ > 0 && calls_ % every_ == 0) || (only_ > 0 && calls_ == only_)) {
      throw HostError("The host refuses " + member + ".");
    }
  }

  HostWorld& world_;
  std::vector<std::string> members_;
  long calls_ = 0;
  long every_ = 0;
  long only_ = 0;
};

}  // namespace scrivo::host
