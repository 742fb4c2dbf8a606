#pragma once

#include <algorithm>
#include <string>

#include "platform/globals.h"
#include "tests/cli/scrivo_run.h"

namespace scrivo {

// Runs over files whose names only the program's own services can write on every system.
class AnyNameRun : public ScrivoRun {
 protected:
  // Writes a page into the web; `name` is WTF-8 with "/" separators, in a folder that exists.
  void Put(std::string name, const std::string& bytes) {
    std::replace(name.begin(), name.end(), '/', Separator(SystemPathStyle()));
    TheServices().files->Write(WebPath() + Separator(SystemPathStyle()) + name, bytes);
  }
  std::string OutputPath(const std::string& name) const {
    return output.path().string() + Separator(SystemPathStyle()) + name;
  }
};

}  // namespace scrivo
