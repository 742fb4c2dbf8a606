#pragma once

// The header of a help file: where its directory and its content are.

#include <cstdint>
#include <filesystem>
#include <optional>
#include <system_error>

#include "bytes/byte_source.h"
#include "chm/problem.h"

namespace scrivo {

struct ContainerHeader {
  std::uint32_t version = 0;
  std::uint64_t directory_offset = 0;
  std::uint64_t directory_length = 0;
  std::uint64_t directory_end = 0;   // within the file
  std::uint64_t content_offset = 0;  // of content section 0
};

// Reads the header. What is wrong with it is added to `*problems`; nothing is returned when the
// file cannot be used at all.
std::optional<ContainerHeader> ReadContainerHeader(const ByteSource& source, Problems* problems);

// Whether the file at `path` begins as a help file does. `*error` gets the system's error when that
// cannot be told, or nothing.
bool StartsAsHelpFile(const std::filesystem::path& path, std::error_code* error);

}  // namespace scrivo
