#include "host/host_arguments.h"

namespace scrivo::host {

HostArguments ParseArguments(const std::vector<std::string>& arguments) {
  HostArguments parsed;
  bool options_end = false;
  for (const std::string& argument : arguments) {
    if (!options_end && argument == "--") {
      options_end = true;
    } else if (!options_end && (argument == "--help" || argument == "-h" || argument == "/?")) {
      parsed.help = true;
    } else if (!options_end && argument == "--external") {
      parsed.external = true;
    } else if (!options_end && argument.starts_with("-")) {
      parsed.problem.append("Unknown option ").append(argument).append(".");
    } else if (!parsed.web.empty()) {
      parsed.problem.append("Unexpected argument \"").append(argument).append("\".");
    } else {
      parsed.web = argument;
    }
    if (!parsed.problem.empty()) break;
  }
  if (parsed.problem.empty() && parsed.external && parsed.web.empty() && !parsed.help) {
    parsed.problem = "--external needs the web's folder.";
  }
  return parsed;
}

std::string Usage() {
  return "ScrivoHost [WEB]\n"
         "ScrivoHost --external WEB\n"
         "\n"
         "Opens the FrontPage web in the folder WEB, shows its navigation tree, and loads the "
         "add-ins registered for SharePoint Designer.\n"
         "\n"
         "--external\tconnects the add-ins as another program would: the compile dialog appears at "
         "once.\n"
         "--help\t\tshows this text.";
}

}  // namespace scrivo::host
