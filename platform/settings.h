#pragma once

#include <string>

namespace scrivo {

// The per-user settings: one text for each application, section and key. They live in the registry
// below HKEY_CURRENT_USER, "Software\VB and VBA Program Settings\<application>\<section>", where
// other add-ins of the host's time keep theirs, one registry key for each application and section.
// A section may be any text, such as a web's address: "/" is an ordinary character of a key name,
// and a "\", which would part the name in two, is written "%5C" in it (so that a section holding
// "\" and the one holding "%5C" in its place are the same). Texts come back as they were saved.

// The saved text, or `default_value` when there is none. A number that somebody stored by hand as
// a double word counts as its decimal text. An empty application, section or key raises Error
// (kInvalidProcedureCall).
std::string GetSetting(const std::string& application, const std::string& section,
                       const std::string& key, const std::string& default_value = "");

// Saves a text. Raises Error (kInvalidProcedureCall) as above, and kPathFileAccessError, naming
// the registry key, when it cannot be stored.
void SaveSetting(const std::string& application, const std::string& section, const std::string& key,
                 const std::string& value);

}  // namespace scrivo
