#pragma once

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace scrivo {

// A command line that cannot be meant; the text says what is wrong and what to do.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// One option of a command.
struct Option {
  std::string name;        // "--title"
  std::string short_name;  // "-o", or "" when it has none
  std::string value;       // what its value is called in the help, "" for one without a value
  std::string help;        // one line or more
  // Takes the value ("" for an option without one). Throws UsageError for one it cannot take.
  std::function<void(const std::string& value)> set;
};

// What a command line may hold: the operands that it must have, in order, and options anywhere.
struct Syntax {
  std::string command;  // "compile"
  std::string summary;  // one line for the list of commands
  struct Operand {
    std::string name;  // "WEB"
    std::string help;
    std::string* target;
  };
  std::vector<Operand> operands;
  std::vector<Option> options;
  std::string note = "";  // what the help ends with; "" for nothing
};

// Reads the arguments after the command's name. An option's value is the next argument or follows
// "=" (after a short name, also nothing); after "--" everything is an operand. Throws UsageError.
void ParseArguments(const std::vector<std::string>& arguments, const Syntax& syntax);

// Whether --help or -h is among the arguments: as an option, not as an option's value, and before
// a "--".
bool AsksForHelp(const std::vector<std::string>& arguments, const Syntax& syntax);

// The help of a command: how it is called, what its operands and options mean.
std::string HelpText(const Syntax& syntax);

}  // namespace scrivo
