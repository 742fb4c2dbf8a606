#include "cli/arguments.h"

#include <algorithm>

#include "cli/suggestion.h"

namespace scrivo {
namespace {

std::string WithSuggestion(const std::string& text, const std::string& suggestion) {
  return suggestion.empty() ? text : text + "; did you mean " + suggestion + "?";
}

class ArgumentReader {
 public:
  ArgumentReader(const std::vector<std::string>& arguments, const Syntax& syntax)
      : arguments_(arguments), syntax_(syntax) {}

  void Read() {
    bool only_operands = false;
    for (at_ = 0; at_ < arguments_.size(); ++at_) {
      const std::string& argument = arguments_[at_];
      if (only_operands || argument.size() < 2 || argument[0] != '-') {
        TakeOperand(argument);
      } else if (argument == "--") {
        only_operands = true;
      } else if (argument[1] == '-') {
        TakeLongOption(argument);
      } else {
        TakeShortOption(argument);
      }
    }
    if (operands_ < syntax_.operands.size()) {
      throw UsageError(syntax_.operands[operands_].name + ": missing");
    }
  }

 private:
  void TakeOperand(const std::string& argument) {
    if (operands_ == syntax_.operands.size()) {
      throw UsageError("\"" + argument + "\": unexpected argument");
    }
    if (argument.empty()) throw UsageError(syntax_.operands[operands_].name + ": empty");
    *syntax_.operands[operands_++].target = argument;
  }

  void TakeLongOption(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    const std::string name = argument.substr(0, equals);
    const Option* option = Find([&](const Option& known) { return known.name == name; });
    if (!option) throw UsageError(WithSuggestion(name + ": unknown option", NameLike(name)));
    if (equals == std::string::npos) {
      Set(*option, name);
    } else if (option->value.empty()) {
      throw UsageError(name + ": takes no value");
    } else {
      option->set(argument.substr(equals + 1));
    }
  }

  void TakeShortOption(const std::string& argument) {
    const std::string name = argument.substr(0, 2);
    const Option* option = Find([&](const Option& known) { return known.short_name == name; });
    if (!option) {
      throw UsageError(WithSuggestion(argument + ": unknown option", NameLike("-" + argument)));
    }
    if (argument.size() == 2) return Set(*option, name);
    if (option->value.empty()) {
      throw UsageError(WithSuggestion(argument + ": unknown option", NameLike("-" + argument)));
    }
    option->set(argument.substr(2));
  }

  // Sets an option whose value, if it takes one, is the next argument.
  void Set(const Option& option, const std::string& name) {
    if (option.value.empty()) return option.set("");
    if (at_ + 1 == arguments_.size()) {
      throw UsageError(name + ": needs a value, as in " + name + " " + option.value);
    }
    option.set(arguments_[++at_]);
  }

  template <typename Predicate>
  const Option* Find(Predicate predicate) const {
    const auto found = std::find_if(syntax_.options.begin(), syntax_.options.end(), predicate);
    return found == syntax_.options.end() ? nullptr : &*found;
  }

  std::string NameLike(const std::string& name) const {
    std::vector<std::string> names;
    for (const Option& option : syntax_.options) names.push_back(option.name);
    return Suggest(name, names);
  }

  const std::vector<std::string>& arguments_;
  const Syntax& syntax_;
  std::size_t at_ = 0;
  std::size_t operands_ = 0;
};

std::string OptionText(const Option& option) {
  std::string text = option.short_name.empty() ? "    " : option.short_name + ", ";
  text += option.name;
  if (!option.value.empty()) text += " " + option.value;
  return text;
}

// Two columns: what, and its help, on the same line when there is room for it.
void AppendRow(std::string* text, const std::string& what, const std::string& help) {
  constexpr std::size_t kHelpColumn = 32;
  *text += "  " + what;
  if (what.size() + 4 > kHelpColumn) {
    *text += "\n" + std::string(kHelpColumn, ' ');
  } else {
    text->append(kHelpColumn - 2 - what.size(), ' ');
  }
  for (const char c : help) {
    *text += c;
    if (c == '\n') text->append(kHelpColumn, ' ');
  }
  *text += "\n";
}

}  // namespace

void ParseArguments(const std::vector<std::string>& arguments, const Syntax& syntax) {
  ArgumentReader(arguments, syntax).Read();
}

bool AsksForHelp(const std::vector<std::string>& arguments, const Syntax& syntax) {
  const auto takes_the_next = [&](const std::string& argument) {
    return std::any_of(syntax.options.begin(), syntax.options.end(), [&](const Option& option) {
      return !option.value.empty() && (argument == option.name || argument == option.short_name);
    });
  };
  for (std::size_t i = 0; i < arguments.size() && arguments[i] != "--"; ++i) {
    if (arguments[i] == "--help" || arguments[i] == "-h") return true;
    if (takes_the_next(arguments[i])) ++i;
  }
  return false;
}

std::string HelpText(const Syntax& syntax) {
  std::string text = "usage: scrivo " + syntax.command;
  for (const Syntax::Operand& operand : syntax.operands) text += " " + operand.name;
  if (!syntax.options.empty()) text += " [options]";
  text += "\n\n" + syntax.summary + "\n\n";
  for (const Syntax::Operand& operand : syntax.operands) {
    AppendRow(&text, operand.name, operand.help);
  }
  if (!syntax.options.empty()) text += "\noptions:\n";
  for (const Option& option : syntax.options) AppendRow(&text, OptionText(option), option.help);
  if (!syntax.note.empty()) text += "\n" + syntax.note + "\n";
  return text;
}

}  // namespace scrivo
