#include "addin/win32/module.h"

#include <atomic>

#include "com/win32/dispatch_object.h"

namespace scrivo {
namespace {

std::atomic<long> references = 0;

}  // namespace

ModuleReference::ModuleReference() { ++references; }

ModuleReference::~ModuleReference() { --references; }

void LockModule(bool locked) { references += locked ? 1 : -1; }

bool CanUnloadModule() { return references == 0 && DispatchObject::LiveObjects() == 0; }

}  // namespace scrivo
