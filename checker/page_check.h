#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "checker/finding.h"
#include "project/project_tree.h"

namespace scrivo {

struct PageFindings {
  std::vector<Finding> findings;
  std::vector<std::string> frames;  // locations of the web's pages that it shows within itself
};

// Finds what is wrong within one page: its links, pictures, title, declared charset and
// components. `bytes` are the page's, `location` where it lies in the web. `web` finds the files
// below the web's folder. `default_code_page` is that of pages that do not tell theirs,
// `welcome_names` are the names that the start page of a folder goes by.
PageFindings CheckPage(std::string_view bytes, const std::string& location, int default_code_page,
                       ProjectTree& web, const std::vector<std::string>& welcome_names);

}  // namespace scrivo
