// The directory of a help file out of foreign bytes.

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "bytes/byte_source.h"
#include "chm/directory.h"
#include "chm/problem.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace scrivo;
  const MemorySource source(std::vector<std::uint8_t>(data, data + size));
  ContainerHeader header;
  header.directory_length = size;
  Problems problems;
  const auto directory = Directory::Read(source, header, &problems);
  for (const Problem& problem : problems) Describe(problem);
  if (!directory) return 0;
  // An entry takes at least five bytes, and every name is found again.
  if (directory->Entries().size() > size / 5) std::abort();
  for (const Entry& entry : directory->Entries()) {
    const Entry* found = directory->Find(entry.name);
    if (found == nullptr || CompareNames(found->name, entry.name) != 0) std::abort();
  }
  return 0;
}
