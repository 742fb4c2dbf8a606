#include "hhc/messages.h"

#include <algorithm>

namespace scrivo {
namespace {

constexpr MessageEntry kMessages[] = {
    {MessageCode::kTooManyTopics, Severity::kWarning,
     "Too many topics associated to the \"%1\" keyword.  Remaining %2 links truncated.",
     "A keyword of the binary index has room for a few hundred topics. Split it into several "
     "keywords, or into subentries of one keyword."},
    {MessageCode::kTagWithoutEnd, Severity::kWarning,
     "%1(%2) : The HTML tag \"%3\" is not a valid HTML tag (it has no \">\" at its end).",
     "Close the tag on that line with \">\", or write `&lt;` where the text means a less-than "
     "sign."},
    {MessageCode::kTagWithoutName, Severity::kWarning,
     "%1(%2) : The HTML tag \"%3\" is not a valid HTML tag (it does not begin with an alphanumeric "
     "character).",
     "Write `&lt;` where the text means a less-than sign. An XML declaration at the top of a page "
     "is harmless and may stay."},
    {MessageCode::kLinkBroken, Severity::kWarning,
     "%1(%2) : The file \"%3\" that is linked here does not exist.",
     "Correct the link or add the file. Names are looked up from the folder of the page, in any "
     "letter case. Each missing file is reported once for a folder, however many pages link to "
     "it."},
    {MessageCode::kIndexLinkBroken, Severity::kWarning,
     "The index entry \"%1\" leads to \"%2\", which does not exist.",
     "Correct the entry's \"Local\" in the index file (.hhk), or remove the entry. The help file "
     "has the keyword without this topic."},
    {MessageCode::kKeywordsTooLong, Severity::kWarning,
     "%1 keywords are too long for the index and were left out, with those below them.",
     "Shorten the keywords in the index file (.hhk). The length that counts is that of the whole "
     "entry, the keywords above it included."},
    {MessageCode::kAliasBroken, Severity::kWarning,
     "An alias has been created to \"%1\" but the file does not exist.",
     "Correct the page's name in the [ALIAS] section of the project. Until then the context number "
     "opens no page."},
    {MessageCode::kNoDefaultTopic, Severity::kWarning, "The default topic \"%1\" does not exist.",
     "Name a page of the help file in \"Default topic\" of the project. Until then a viewer opens "
     "with an error page."},
    {MessageCode::kIncludeUnreadable, Severity::kWarning, "The %1 \"%2\" cannot be read.",
     "Correct the name of the included file, or make the file readable. The help file is made "
     "without what it would have added."},
    {MessageCode::kCharactersLost, Severity::kWarning,
     "%1 characters of titles, contents and index have no place in the code page %2 of the "
     "project's language and became \"?\".",
     "Choose a \"Language\" in the project whose code page has the characters, or spell the titles "
     "and keywords without them. The pages themselves keep theirs."},
    {MessageCode::kNoEqualsSign, Severity::kWarning,
     "The following option line does not contain an '=' character separating the option and its "
     "value: %1",
     "Write the line of the [OPTIONS] section as `option=value`, or remove it."},
    {MessageCode::kUnknownOption, Severity::kWarning,
     "Line %1 of the project: the option \"%2\" is not known and is ignored.",
     "Check the option's spelling, or remove the line."},
    {MessageCode::kUnknownSection, Severity::kWarning,
     "Line %1 of the project: the section [%2] is not known and is ignored.",
     "Check the section's name, or remove it with its lines."},
    {MessageCode::kListedTwice, Severity::kWarning,
     "The file \"%1\" is already listed in the [FILES] section of the project file.",
     "Remove the line. The file is stored once; names that differ only in letter case mean the "
     "same file."},
    {MessageCode::kUnsupported, Severity::kWarning,
     "Line %1 of the project: the %2 is not supported; the help file is made without it.",
     "Nothing needs to be done if you can do without it: this compiler makes no .chi file and no "
     "information types."},
    {MessageCode::kContentsExist, Severity::kWarning,
     "The contents file \"%1\" is there and is used as it is; \"Auto TOC\" adds nothing to it.",
     "Remove \"Auto TOC\" from the project to keep the contents file, or remove the contents file "
     "to have the contents made from the headings of the pages."},
    {MessageCode::kNotCompiled, Severity::kError, "Compilation failed while compiling %1.",
     "The project names a file that does not exist or cannot be read. Correct the name or the "
     "file's permissions. The help file is made without it."},
    {MessageCode::kOutputFailed, Severity::kError, "Cannot %1 \"%2\" (%3). Compilation stopped.",
     "The reason in parentheses is the system's. Usually the disk is full, the folder does not "
     "exist or is write-protected, or a viewer has the help file open. An earlier help file of "
     "that name is left as it was."},
    {MessageCode::kContentsLinkBroken, Severity::kError,
     "URL reference in the TOC cannot be resolved: \"%1\".",
     "Correct the entry's \"Local\" in the contents file (.hhc), or add the page. The help file "
     "has the entry, but it opens no page."},
    {MessageCode::kSearchIndexTooLarge, Severity::kError,
     "The search index takes more than 4 GiB, which a help file cannot hold. Compilation stopped.",
     "Name a list of frequent words in \"Full text search stop list file\", set \"Full-text "
     "search\" to No, or split the help file."},
    {MessageCode::kNoTopics, Severity::kError,
     "The project has no topics to compile. Compilation stopped.",
     "List at least one page in the [FILES] section of the project, and check that the names in "
     "it are right."},
};

}  // namespace

std::span<const MessageEntry> MessageTable() { return kMessages; }

CompileMessage MakeMessage(MessageCode code, std::initializer_list<std::string_view> arguments) {
  const MessageEntry& entry =
      *std::find_if(std::begin(kMessages), std::end(kMessages),
                    [code](const MessageEntry& candidate) { return candidate.code == code; });
  CompileMessage message{static_cast<int>(code), entry.severity, ""};
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
