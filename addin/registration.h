#pragma once

#include <string>

#include "system/registry_store.h"

namespace scrivo {

// The class identifier of the add-in.
constexpr const char* kConnectClass = "{A349BFC6-03EA-4860-BDC5-421DBEDABC7D}";

// Registers the class, which lives in the library `library_path`, and the add-in with its host:
// for all users (which replaces a registration for the current one), or, where that fails, for the
// current one. True when either was done whole; what was written in vain is taken back.
bool RegisterAddin(RegistryStore& registry, const std::string& library_path);

// Takes back what RegisterAddin has written, for all users and for the current one, and no more:
// our keys go when nothing else is in them, the keys above them stay, and so does the add-in's
// name where it belongs to another class. True when nothing of it is left.
bool UnregisterAddin(RegistryStore& registry);

// The same for the current user alone: a registration for all users is neither asked for nor
// touched.
bool RegisterAddinForThisUser(RegistryStore& registry, const std::string& library_path);
bool UnregisterAddinForThisUser(RegistryStore& registry);

}  // namespace scrivo
