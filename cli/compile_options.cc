#include "cli/compile_options.h"

#include <algorithm>
#include <cstdlib>
#include <optional>

#include "cli/suggestion.h"
#include "text/code_page.h"
#include "text/languages.h"
#include "text/visible_text.h"

namespace scrivo {
namespace {

constexpr const char* kContentsNames[] = {"auto", "navigation", "folders"};
constexpr ContentsChoice kContentsChoices[] = {ContentsChoice::kAuto, ContentsChoice::kNavigation,
                                               ContentsChoice::kFolders};
constexpr const char* kSourceNames[] = {"keywords", "titles", "headings"};
constexpr IndexSource kSources[] = {IndexSource::kKeywords, IndexSource::kTitles,
                                    IndexSource::kHeadings};

// The place of `value` among three names.
std::size_t OneOf(const std::string& option, const char* const (&names)[3],
                  const std::string& value) {
  for (std::size_t i = 0; i < 3; ++i) {
    if (value == names[i]) return i;
  }
  const std::string suggestion = Suggest(value, {names[0], names[1], names[2]});
  throw UsageError(option + ": unknown value \"" + value + "\"; " +
                   (suggestion.empty()
                        ? std::string("choose ") + names[0] + ", " + names[1] + " or " + names[2]
                        : "did you mean " + suggestion + "?"));
}

std::vector<IndexSource> SourcesFrom(const std::string& list) {
  std::vector<IndexSource> sources;
  for (std::size_t at = 0; at <= list.size();) {
    const std::size_t end = std::min(list.find(',', at), list.size());
    sources.push_back(kSources[OneOf("--index", kSourceNames, list.substr(at, end - at))]);
    at = end + 1;
  }
  return sources;
}

int CodePageFrom(const std::string& value) {
  std::optional<int> code_page = CodePageFromName(value);
  if (!code_page) code_page = CodePageFromName("cp" + value);
  if (!code_page) {
    throw UsageError("--code-page: unknown code page \"" + value +
                     "\"; give a number such as 1251 or a name such as koi8-r");
  }
  return *code_page;
}

// A tag, or the number as a project has it.
std::uint32_t LanguageFrom(const std::string& value) {
  std::uint32_t language = LanguageFromTag(value);
  if (language == 0 && !value.empty() && value[0] >= '0' && value[0] <= '9') {
    char* end = nullptr;
    const unsigned long number = std::strtoul(value.c_str(), &end, 0);
    if (*end == '\0' && number <= 0xFFFF) language = static_cast<std::uint32_t>(number);
    if (LanguageName(language).empty()) language = 0;
  }
  if (language == 0) {
    throw UsageError("--language: unknown language \"" + value +
                     "\"; give a tag such as de or zh-TW, or a number such as 0x407");
  }
  return language;
}

Option Switch(const std::string& name, const std::string& help, bool* target, bool value) {
  return {name, "", "", help, [=](const std::string&) { *target = value; }};
}

Option Text(const std::string& name, const std::string& short_name, const std::string& value_name,
            const std::string& help, std::string* target) {
  return {name, short_name, value_name, help, [=](const std::string& value) {
            if (value.empty()) throw UsageError(name + ": empty " + value_name);
            if (HasControlCharacters(value)) {
              throw UsageError(name + ": " + value_name +
                               " contains a line break or another control character");
            }
            *target = value;
          }};
}

// The compiler reads the name from a project file, without the blanks at its ends: the file that
// it writes would be another one than the one that is looked after here.
Option OutputOption(CompileOptions* options) {
  Option option =
      Text("--output", "-o", "FILE",
           "the help file to make (default: TITLE.CHM in\nthe current folder)", &options->output);
  option.set = [take = option.set](const std::string& value) {
    take(value);
    if (value.front() == ' ' || value.back() == ' ') {
      throw UsageError("--output: FILE \"" + value + "\" begins or ends with a space");
    }
  };
  return option;
}

}  // namespace

std::string NoIndexHint(const std::vector<IndexSource>& sources) {
  const auto has = [&](IndexSource source) {
    return std::find(sources.begin(), sources.end(), source) != sources.end();
  };
  if (has(IndexSource::kTitles) && has(IndexSource::kHeadings)) {
    return "To leave out the index without this warning, use --no-index.";
  }
  if (has(IndexSource::kTitles)) {
    return "To make an index from the headings, use --index headings.";
  }
  if (has(IndexSource::kHeadings)) return "To make an index from the titles, use --index titles.";
  return "To make an index from titles or headings, use --index titles, --index headings or "
         "--index keywords,titles,headings.";
}

void ThrowIfContradicting(const CompileOptions& options) {
  // Through UTF-8 every language goes.
  if (options.language == 0 || options.code_page == 0 || options.code_page == kUtf8CodePage) return;
  const int of_language = CodePageOfLanguage(options.language);
  if (AnsiCodePageFor(options.code_page) == of_language) return;
  throw UsageError("--language: " + std::string(LanguageName(options.language)) +
                   " is written in code page " + std::to_string(of_language) + ", not in " +
                   std::to_string(options.code_page) + "; leave out --code-page or --language");
}

Syntax::Operand WebOperand(CompileOptions* options) {
  return {"WEB", "the folder of a FrontPage web", &options->web};
}

std::vector<Option> ReadingOptions(CompileOptions* options) {
  return {
      {"--contents", "", "FROM", "make the contents from: auto (default),\nnavigation, folders",
       [=](const std::string& value) {
         options->reading.contents = kContentsChoices[OneOf("--contents", kContentsNames, value)];
       }},
      {"--code-page", "", "CP",
       "code page of labels, titles and keywords\n(default: what the web says)",
       [=](const std::string& value) { options->code_page = CodePageFrom(value); }},
      {"--language", "", "TAG",
       "language of the help file, such as de or zh-TW\n(default: what the web says)",
       [=](const std::string& value) { options->language = LanguageFrom(value); }},
      Switch("--with-hidden",
             "take in _private, and files and folders whose\nnames begin with a point or _vti_",
             &options->with_hidden, true),
      Switch("--all-messages", "show all messages, not only 20 of a kind", &options->all_messages,
             true),
      {"--quiet", "-q", "", "print errors only",
       [=](const std::string&) { options->quiet = true; }},
  };
}

std::vector<Option> AllCompileOptions(CompileOptions* options) {
  std::vector<Option> all = {
      OutputOption(options),
      Text("--title", "", "TEXT", "its title (default: the home page's label)", &options->title),
      Text("--default-page", "", "ADDRESS",
           "the page it opens with (default: the home page,\nelse the first one of the contents)",
           &options->default_page),
      {"--index", "", "LIST",
       "make index entries from: keywords (default),\ntitles, headings, or a list with commas",
       [=](const std::string& value) { options->reading.index = SourcesFrom(value); }},
      Switch("--no-index", "make no index", &options->use_index, false),
      Switch("--no-favorites", "no Favorites tab in the viewer", &options->favorites, false),
      Switch("--without-bars",
             "leave FrontPage's navigation bars and shared\nborders out of the pages",
             &options->reading.without_bars, true),
      Switch("--keep-charsets",
             "keep wrong charset declarations of UTF-8 pages,\nwhich are corrected otherwise",
             &options->keep_charsets, true),
      Switch("--keep-project", "keep the project files in the web's folder", &options->keep_project,
             true),
      Text("--compiler", "", "FILE",
           "help compiler to run in place of Scrivo's own;\nit reads a copy of the web",
           &options->compiler),
      Switch("--view", "open the help file when it is made", &options->view, true),
      Switch("--strict", "exit with status 1 on compiler messages", &options->strict, true),
  };
  for (Option& option : ReadingOptions(options)) all.push_back(std::move(option));
  return all;
}

}  // namespace scrivo
