#include "hhc/messages.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr MessageEntry kMessages[] = {
    {MessageCode::kTooManyTopics, Severity::kWarning,
     "Too many topics associated to the \"%1\" keyword.  Remaining %2 links truncated.",
     "A keyword of the binary index has room for a few hundred topics only. Split it into several "
     "keywords, or into subentries."},
    {MessageCode::kTagWithoutEnd, Severity::kWarning,
     "%1(%2) : The HTML tag \"%3\" is not a valid HTML tag (no closing \">\").",
     "Close the tag on that line with \">\", or write `&lt;` where the text means a less-than "
     "sign."},
    {MessageCode::kTagWithoutName, Severity::kWarning,
     "%1(%2) : The HTML tag \"%3\" is not a valid HTML tag (it does not begin with an alphanumeric "
     "character).",
     "Write `&lt;` where the text means a less-than sign. An XML declaration at the top of a page "
     "is harmless."},
    {MessageCode::kLinkBroken, Severity::kWarning,
     "%1(%2) : The linked file \"%3\" does not exist.",
     "Correct the link or add the file. Names are relative to the folder of the page and not "
     "case-sensitive. A missing file is reported once per folder, however many pages link to it."},
    {MessageCode::kIndexLinkBroken, Severity::kWarning,
     "Index entry \"%1\": the topic \"%2\" does not exist.",
     "Correct the entry's \"Local\" in the index file (.hhk), or remove the entry. The keyword is "
     "kept without this topic."},
    {MessageCode::kKeywordsTooLong, Severity::kWarning,
     "%1 keywords too long for the index were left out, along with their subentries.",
     "Shorten the keywords in the index file (.hhk). What counts is the length of the whole entry, "
     "including the keywords above it."},
    {MessageCode::kAliasBroken, Severity::kWarning,
     "An alias has been created to \"%1\" but the file does not exist.",
     "Correct the page's name in the [ALIAS] section of the project. As it is, the context number "
     "opens no page."},
    {MessageCode::kNoDefaultTopic, Severity::kWarning, "The default topic \"%1\" does not exist.",
     "Set \"Default topic\" in the project to a page of the help file. As it is, the viewer opens "
     "with an error page."},
    {MessageCode::kIncludeUnreadable, Severity::kWarning, "The %1 \"%2\" cannot be read.",
     "Correct the name of the included file, or make the file readable. The help file is made "
     "without its contents."},
    {MessageCode::kCharactersLost, Severity::kWarning,
     "%1 characters in titles, contents and index are not in code page %2 of the project's "
     "language "
     "and were replaced by \"?\".",
     "Set \"Language\" in the project to one whose code page has the characters, or avoid them in "
     "titles and keywords. The pages themselves are not affected."},
    {MessageCode::kNoEqualsSign, Severity::kWarning,
     "The following option line does not contain an '=' character separating the option and its "
     "value: %1",
     "Write the line of the [OPTIONS] section as `option=value`, or remove it."},
    {MessageCode::kUnknownOption, Severity::kWarning,
     "Line %1 of the project: unknown option \"%2\" ignored.",
     "Check the option's spelling, or remove the line."},
    {MessageCode::kUnknownSection, Severity::kWarning,
     "Line %1 of the project: unknown section [%2] ignored.",
     "Check the section's name, or remove the section."},
    {MessageCode::kListedTwice, Severity::kWarning,
     "The file \"%1\" is already listed in the [FILES] section of the project file.",
     "Remove the line. The file is stored only once; names that differ only in case refer to the "
     "same file."},
    {MessageCode::kUnsupported, Severity::kWarning,
     "Line %1 of the project: %2 not supported; the help file is made without it.",
     "If you can do without it, you need not do anything: this compiler makes no .chi files and no "
     "information types, which no viewer outside Windows reads (see docs/toolchains.md), and it "
     "adds "
     "no citations or copyright notes."},
    {MessageCode::kContentsExist, Severity::kWarning,
     "The contents file \"%1\" already exists and is used as it is; \"Auto TOC\" has no effect.",
     "To keep the contents file, remove \"Auto TOC\" from the project. To have the contents made "
     "from the headings of the pages, delete the contents file."},
    {MessageCode::kNotCompiled, Severity::kError, "Compilation failed while compiling %1.",
     "The project names a file that does not exist or cannot be read, or a pattern that no file "
     "matches. Correct the name or the file's permissions. The help file is made without it."},
    {MessageCode::kOutputFailed, Severity::kError, "Cannot %1 \"%2\" (%3). Compilation stopped.",
     "The reason in parentheses comes from the system. Usually the disk is full, the folder cannot "
     "be made or is write-protected, or the help file is open in a viewer. An earlier help file "
     "of that name is left unchanged."},
    {MessageCode::kPathTooLong, Severity::kError,
     "The path \"%1\" is too long for a help file and was left out.",
     "A help file holds paths of up to 2,000 bytes, counted from the project's folder. Move the "
     "file "
     "up, or shorten the names of its folders."},
    {MessageCode::kContentsLinkBroken, Severity::kError,
     "URL reference in the TOC cannot be resolved: \"%1\".",
     "Correct the entry's \"Local\" in the contents file (.hhc), or add the page. The help file "
     "has the entry, but it opens no page."},
    {MessageCode::kSearchIndexTooLarge, Severity::kError,
     "The search index exceeds 4 GiB, the most that a help file can hold. Compilation stopped.",
     "Exclude frequent words with \"Full text search stop list file\", set \"Full-text search\" to "
     "No, or split the help file."},
    {MessageCode::kNoTopics, Severity::kError,
     "The project has no topics to compile. Compilation stopped.",
     "List at least one page in the [FILES] section of the project, and check that the names in "
     "it are correct."},
};

}  // namespace

std::span<const MessageEntry> MessageTable() { return kMessages; }

CompileMessage MakeMessage(MessageCode code, std::initializer_list<std::string_view> arguments) {
  const MessageEntry& entry =
      *std::find_if(std::begin(kMessages), std::end(kMessages),
                    [code](const MessageEntry& candidate) { return candidate.code == code; });
  CompileMessage message{static_cast<int>(code), entry.severity, "", ""};
  for (std::size_t i = 0; i < entry.text.size(); ++i) {
    if (entry.text[i] == '%') {
      message.text += arguments.begin()[entry.text[++i] - '1'];
    } else {
      message.text += entry.text[i];
    }
  }
  return message;
}

std::string CompileMessage::Line() const {
  static constexpr std::string_view kKinds[] = {"Note: ", "Warning: ", "Error: "};
  std::string line;
  if (code != 0) line = "HHC" + std::to_string(code) + ": ";
  line += kKinds[static_cast<int>(severity)];
  return line + text;
}

}  // namespace scrivo
