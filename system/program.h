#pragma once

#include <string>
#include <vector>

namespace scrivo {

// The arguments behind the program's name, of what main was given: the bytes as they are on POSIX;
// on Windows the wide command line (text/wtf8.h), which names any file.
std::vector<std::string> ProgramArguments(int argc, char** argv);

// The value of an environment variable as text inside, or as a path; empty when it is not set.
std::string EnvironmentVariable(const std::string& name);

// What a command line program asks about the streams it talks through.

enum class StandardStream { kOutput, kError };

// True when a person looks at the stream: it goes to a terminal and not to a file or a program.
bool IsTerminal(StandardStream stream);

// How many characters a line of that terminal holds; 80 when it does not tell.
int TerminalColumns(StandardStream stream);

// The code page in which a program of this system prints for others to read through a pipe: UTF-8
// (65001) on POSIX, the ANSI code page on Windows, where consoles show that from this call on.
int TerminalCodePage();

// Consoles show UTF-8 from this call on, as terminals on POSIX do anyway.
void ShowUtf8OnTerminal();

}  // namespace scrivo
