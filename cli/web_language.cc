#include "cli/web_language.h"

#include <optional>

#include "platform/globals.h"
#include "system/error.h"
#include "system/services.h"
#include "text/code_page.h"
#include "text/languages.h"
#include "webs/disk_web.h"
#include "webs/host_notes.h"

namespace scrivo {
namespace {

constexpr int kWestern = 1252;

// The code page of the web's texts, which is never UTF-8: a help file cannot be in that. Nothing
// when the web tells none.
std::optional<int> ToldCodePage(const ServiceNotes& notes, std::uint32_t language,
                                const std::string& path, bool with_hidden) {
  const std::optional<int> noted = CodePageFromName(notes.charset);
  if (noted && *noted != kUtf8CodePage) return noted;
  if (language != 0 && CodePageOfLanguage(language) != kWestern) {
    return CodePageOfLanguage(language);
  }
  WebProblemList told_later;  // when the web is opened to be read
  DiskWebOptions reading;
  reading.leaves_out_hidden = !with_hidden;
  const std::optional<int> of_pages = OpenDiskWeb(path, reading, told_later)->CodePageOfPages();
  if (of_pages) return of_pages;
  return language != 0 ? std::optional<int>(kWestern) : std::nullopt;
}

}  // namespace

WebLanguage LanguageOfWeb(const CompileOptions& options, const std::string& path) {
  WebProblemList told_later;
  const ServiceNotes notes =
      ReadServiceNotes(*TheServices().files, path, Globals().path_style, told_later);
  const std::uint32_t noted = LanguageFromTag(notes.language);
  WebLanguage web;
  const bool is_chosen = options.code_page != 0 && options.code_page != kUtf8CodePage;
  if (is_chosen) {
    web.undeclared_code_page = options.code_page;
  } else if (const auto told = ToldCodePage(notes, noted, path, options.with_hidden)) {
    web.undeclared_code_page = *told;
  } else {
    web.undeclared_code_page =
        options.language != 0 ? CodePageOfLanguage(options.language) : kWestern;
  }
  web.help_code_page = AnsiCodePageFor(web.undeclared_code_page);
  if (options.language != 0 && CodePageOfLanguage(options.language) != web.help_code_page) {
    const std::string wanted = std::to_string(CodePageOfLanguage(options.language));
    throw Error(kInvalidProcedureCall, "scrivo",
                "--language: " + std::string(LanguageName(options.language)) +
                    " is written in code page " + wanted + ", but the web in " +
                    std::to_string(web.undeclared_code_page) +
                    ". If the web's texts are in that language, add --code-page " + wanted + ".");
  }
  web.language = options.language != 0 ? options.language : noted;
  if (web.language == 0 || CodePageOfLanguage(web.language) != web.help_code_page) {
    web.language = LanguageOfCodePage(web.help_code_page);
  }
  web.written_code_page = options.code_page == kUtf8CodePage ? kUtf8CodePage : web.help_code_page;
  return web;
}

}  // namespace scrivo
