#pragma once

#include <string>

#include "platform/registry_tree.h"

namespace scrivo {

// A registry as text, in the form that the registry editors of Windows exchange ("REGEDIT4", the
// one with bytes in the ANSI code page):
//
//   REGEDIT4
//
//   [HKEY_CURRENT_USER\Software\Microsoft\HTML Help Workshop]
//   @="the key's default value"
//   "InstallDir"="/opt/help"
//   "Count"=dword:0000002a
//   "Bytes"=hex:00,ff
//   "Home"=hex(2):25,48,4f,4d,45,25,00
//
// A key with neither values nor sub-keys is a heading alone. Quoted names and texts write "\", the
// quote, CR and LF as \\, \", \r and \n. A text that does not end in its only NUL, and every type
// without a form of its own, is given as hex with the type code (in hexadecimal) and its bytes.

// Writes the tree with LF line ends; keys in the order of their names. Key names must not hold CR
// or LF.
std::string FormatRegistry(const RegistryTree& tree);

// Reads such a text; lines may end in CR LF, and those that begin with ";" are comments. What is
// not such a text raises Error (kPathFileAccessError) that names `file_name` and the line.
RegistryTree ParseRegistry(const std::string& text, const std::string& file_name);

}  // namespace scrivo
