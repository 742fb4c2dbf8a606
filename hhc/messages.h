#pragma once

// Every message of the compiler. docs/messages.md is made from this table.

#include <initializer_list>
#include <span>
#include <string_view>

#include "hhc/compiler.h"

namespace scrivo {

// The values are the numbers that users see, as in "HHC3010".
enum class MessageCode {
  kTooManyTopics = 0,  // shown without a number
  kTagWithoutEnd = 3002,
  kTagWithoutName = 3004,
  kLinkBroken = 3010,
  kIndexLinkBroken = 3011,
  kKeywordsTooLong = 3012,
  kAliasBroken = 3015,
  kNoDefaultTopic = 3016,
  kIncludeUnreadable = 3017,
  kCharactersLost = 3018,
  kNoEqualsSign = 4003,
  kUnknownOption = 4004,
  kUnknownSection = 4005,
  kListedTwice = 4006,
  kUnsupported = 4007,
  kContentsExist = 4008,
  kNotCompiled = 5003,
  kOutputFailed = 5010,
  kPathTooLong = 5012,
  kContentsLinkBroken = 5013,
  kSearchIndexTooLarge = 5014,
  kNoTopics = 6000,
};

struct MessageEntry {
  MessageCode code;
  Severity severity;
  std::string_view text;    // %1 to %9 stand for the arguments
  std::string_view advice;  // what the author of the project can do about it
};

// All messages, each once, by number.
std::span<const MessageEntry> MessageTable();

// A message as it is told. `arguments` fill the places of its text in turn.
CompileMessage MakeMessage(MessageCode code, std::initializer_list<std::string_view> arguments);

}  // namespace scrivo
