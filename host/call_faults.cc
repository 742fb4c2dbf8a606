#include "host/call_faults.h"

#include "host/host_error.h"

namespace scrivo::host {

void CallFaults::FailEvery(long n) {
  every_ = n;
  only_ = calls_ = 0;
}

void CallFaults::FailOnly(long n) {
  only_ = n;
  every_ = calls_ = 0;
}

void CallFaults::Count(const std::string& member) {
  ++calls_;
  if (listener) listener(member);
  if ((every_ > 0 && calls_ % every_ == 0) || (only_ > 0 && calls_ == only_)) {
    throw HostError("The host refuses " + member + ".");
  }
}

}  // namespace scrivo::host
