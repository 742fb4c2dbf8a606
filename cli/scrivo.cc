#include "cli/scrivo.h"

#include <algorithm>

#include "cli/check_command.h"
#include "cli/compile_command.h"
#include "cli/decompile_command.h"
#include "cli/error_text.h"
#include "cli/export_command.h"
#include "cli/help_commands.h"
#include "cli/suggestion.h"
#include "cli/tree_command.h"
#include "system/interruption.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

constexpr int kDone = 0;
constexpr int kNotDone = 1;
constexpr int kWrongUsage = 2;
constexpr int kInterrupted = 130;

// One command: what it takes, and what it does once its options are read.
struct Command {
  Syntax syntax;
  std::function<int(const Streams& streams)> run;
};

// What a command does on a console.
using Work = std::function<int(Console& console)>;

int RunOnConsole(const Work& work, bool quiet, const Streams& streams);

// Behind the options of an export itself those of a compile that say what is in the help file.
std::vector<Option> WithWebOptions(std::vector<Option> options, ExportOptionsGiven* site) {
  for (Option& option : AllCompileOptions(&site->web)) {
    constexpr std::string_view kOfTheFile[] = {"--output", "--keep-project", "--view"};
    if (std::find(std::begin(kOfTheFile), std::end(kOfTheFile), option.name) ==
        std::end(kOfTheFile)) {
      options.push_back(std::move(option));
    }
  }
  return options;
}

Option ForceOption(ExportOptionsGiven* site) {
  return {"--force", "", "",
          "write into a folder that is not empty, replacing the files\n"
          "of an earlier export and no others",
          [=](const std::string&) { site->force = true; }};
}

Option ScriptsOption(ExportOptionsGiven* site) {
  return {"--scripts", "", "", "keep the pages' own scripts",
          [=](const std::string&) { site->scripts = true; }};
}

std::vector<Option> SiteOptions(ExportOptionsGiven* site) {
  return WithWebOptions({ForceOption(site), ScriptsOption(site)}, site);
}

std::vector<Option> ViewOptions(ExportOptionsGiven* site) {
  return WithWebOptions({ScriptsOption(site)}, site);
}

std::vector<Option> TextOptions(ExportOptionsGiven* site) {
  return WithWebOptions(
      {{"--output", "-o", "FOLDER", "write one file per topic, and the pictures, into a folder",
        [=](const std::string& value) { site->folder = value; }},
       ForceOption(site)},
      site);
}

std::vector<Option> CheckingOptions(CheckOptionsGiven* check) {
  std::vector<Option> options = {
      {"--json", "", "", "print the findings as JSON",
       [=](const std::string&) { check->json = true; }},
  };
  for (Option& option : ReadingOptions(&check->web)) options.push_back(std::move(option));
  return options;
}

std::vector<Command> MakeCommands(CompileOptions* web, HelpFileOptions* help_file,
                                  ExportOptionsGiven* site, CheckOptionsGiven* check) {
  const auto on_web = [web](int (*command)(const CompileOptions&, Console&)) {
    return [=](const Streams& streams) {
      const auto work = [=](Console& console) { return command(*web, console); };
      return RunOnConsole(work, web->quiet, streams);
    };
  };
  const Syntax::Operand file = {"FILE", "a compiled help file (.chm)", &help_file->file};
  const Syntax::Operand folder = {"FOLDER", "where to put its files; created if necessary",
                                  &help_file->folder};
  const Syntax::Operand source = {
      "SOURCE", "a help file (.chm), a help project (.hhp) or a web's folder", &site->web.web};
  const Syntax::Operand site_folder = {"FOLDER", "where to put the site; created if necessary",
                                       &site->folder};
  const Option quiet = {"--quiet", "-q", "", "print errors only",
                        [=](const std::string&) { help_file->quiet = true; }};
  const Option internal = {"--internal", "", "", "include the help file's internal streams",
                           [=](const std::string&) { help_file->internal = true; }};
  return {
      {{"compile",
        "Compiles a FrontPage web into a help file (.chm).",
        {WebOperand(web)},
        AllCompileOptions(web),
        "The exit status is 0 if the help file was made, 1 if it was not or if --strict\nis given "
        "and the compiler reported problems, and 2 if the command line is wrong."},
       on_web(CompileWeb)},
      {{"project",
        "Writes a help project for a web and prints the paths of its files.",
        {WebOperand(web)},
        AllCompileOptions(web),
        "Nothing is compiled: -o only says which help file the project is to make, and\n"
        "--compiler, --view, --strict, --keep-charsets and --keep-project change nothing\nhere. "
        "--without-bars is refused: a project names the pages as they are on disk."},
       [=](const Streams& streams) {
         if (web->reading.without_bars) {
           throw UsageError(
               "--without-bars: a project names the pages on disk, bars and all; leave out "
               "--without-bars, or make the help file with scrivo compile");
         }
         return on_web(WriteProjectOf)(streams);
       }},
      {{"tree",
        "Prints a web's contents: labels, pages, and the pages outside them.",
        {WebOperand(web)},
        ReadingOptions(web)},
       on_web(PrintTree)},
      {{"check",
        "Finds what is wrong with a web before its readers do.",
        {WebOperand(&check->web)},
        CheckingOptions(check),
        "The exit status is 0 if nothing was found, 1 if something was or the web cannot\nbe read, "
        "and 2 if the command line is wrong."},
       [=](const Streams& streams) {
         const auto work = [=](Console& console) { return CheckWebOf(*check, console); };
         return RunOnConsole(work, check->web.quiet, streams);
       }},
      {{"decompile",
        "Unpacks a help file into a folder, as a web if you like.",
        {file, folder},
        {{"--web", "", "",
          "make a FrontPage web, with the contents as its\nnavigation structure, in a new or empty "
          "FOLDER",
          [=](const std::string&) { help_file->web = true; }},
         {"--keywords", "", "",
          "write the index into the web's pages as their\nkeywords; what pages cannot hold is "
          "counted",
          [=](const std::string&) { help_file->keywords = true; }},
         quiet}},
       [=](const Streams& streams) {
         if (help_file->keywords && !help_file->web) {
           throw UsageError("--keywords: only a web has them; add --web");
         }
         const auto work = [=](Console& console) { return UnpackFile(*help_file, console); };
         return RunOnConsole(work, help_file->quiet, streams);
       }},
      {{"export",
        "Makes a site for any browser from a help file, a help project or a web.",
        {source, site_folder},
        SiteOptions(site),
        "The site needs no server: open its index.html. Options for compiling apply to webs only."},
       [=](const Streams& streams) {
         const auto work = [=](Console& console) { return ExportToSite(*site, console); };
         return RunOnConsole(work, site->web.quiet, streams);
       }},
      {{"view",
        "Shows a help file, a help project or a web in the browser.",
        {source},
        ViewOptions(site),
        "The site is made once and kept in your cache. Options for compiling apply to webs only."},
       [=](const Streams& streams) {
         const auto work = [=](Console& console) { return ViewAsSite(*site, console); };
         return RunOnConsole(work, site->web.quiet, streams);
       }},
      {{"text",
        "Prints a help file's, a project's or a web's topics as Markdown.",
        {source},
        TextOptions(site)},
       [=](const Streams& streams) {
         const auto work = [=, &streams](Console& console) {
           return ExportToText(*site, console, streams.out);
         };
         return RunOnConsole(work, site->web.quiet, streams);
       }},
      {{"list", "Prints the files in a help file and their sizes.", {file}, {internal}},
       [=](const Streams& streams) {
         return RunList(help_file->file, help_file->internal, streams.out, streams.err);
       }},
      {{"info", "Prints a help file's title, default topic, window and contents.", {file}, {}},
       [=](const Streams& streams) { return RunInfo(help_file->file, streams.out, streams.err); }},
  };
}

std::string Overview(const std::vector<Command>& commands) {
  std::string text =
      "usage: scrivo COMMAND ...\n\n"
      "Turns FrontPage webs into compiled help files, and unpacks help files.\n\n"
      "commands:\n";
  for (const Command& command : commands) {
    text += "  " + command.syntax.command + std::string(12 - command.syntax.command.size(), ' ') +
            command.syntax.summary + "\n";
  }
  return text +
         "\nFor the options of a command: scrivo help COMMAND. For the version: scrivo "
         "--version.\n";
}

const Command& FindCommand(const std::vector<Command>& commands, const std::string& name) {
  std::vector<std::string> names;
  for (const Command& command : commands) {
    if (command.syntax.command == name) return command;
    names.push_back(command.syntax.command);
  }
  const std::string suggestion = Suggest(name, names);
  const std::string kind = name.starts_with("-") ? "option" : "command";
  throw UsageError(name + ": unknown " + kind +
                   (suggestion.empty() ? "" : "; did you mean " + suggestion + "?"));
}

int RunOnConsole(const Work& work, bool quiet, const Streams& streams) {
  ConsoleOptions console_options;
  console_options.live = streams.live;
  console_options.quiet = quiet;
  console_options.columns = streams.columns;
  console_options.clock = streams.clock;
  Console console(streams.out, streams.err, console_options);
  int status = kNotDone;
  try {
    status = work(console);
  } catch (...) {
    const Error error = ErrorFrom(std::current_exception());
    console.EndSteps();
    if (error.number != kUserInterrupt) console.Fail(VisibleLine(ErrorText(error)));
  }
  return Interrupted() ? kInterrupted : status;
}

}  // namespace

int RunScrivo(const std::vector<std::string>& arguments, const Streams& streams) {
  CompileOptions web;
  HelpFileOptions help_file;
  ExportOptionsGiven site;
  CheckOptionsGiven check;
  const std::vector<Command> commands = MakeCommands(&web, &help_file, &site, &check);
  std::string help = "scrivo --help";  // where the one who got the usage wrong can look it up
  try {
    if (arguments.empty()) {
      streams.err << Overview(commands);
      return kWrongUsage;
    }
    if (arguments[0] == "--help" || arguments[0] == "-h" ||
        (arguments[0] == "help" && arguments.size() == 1)) {
      streams.out << Overview(commands);
      return kDone;
    }
    if (arguments[0] == "help") {
      if (arguments.size() > 2) throw UsageError("unexpected argument \"" + arguments[2] + "\"");
      streams.out << HelpText(FindCommand(commands, arguments[1]).syntax);
      return kDone;
    }
    if (arguments[0] == "--version") {
      streams.out << "scrivo " << SCRIVO_VERSION << "\n";
      return kDone;
    }
    const Command& command = FindCommand(commands, arguments[0]);
    help = "scrivo " + command.syntax.command + " --help";
    const std::vector<std::string> rest(arguments.begin() + 1, arguments.end());
    if (AsksForHelp(rest, command.syntax)) {
      streams.out << HelpText(command.syntax);
      return kDone;
    }
    ParseArguments(rest, command.syntax);
    ThrowIfContradicting(web);
    ThrowIfContradicting(site.web);
    return command.run(streams);
  } catch (const UsageError& error) {
    streams.err << "scrivo: error: " << error.what() << "\nSee " << help << ".\n";
    return kWrongUsage;
  } catch (const std::exception& error) {
    streams.err << "scrivo: error: " << error.what() << "\n";
    return kNotDone;
  }
}

}  // namespace scrivo
