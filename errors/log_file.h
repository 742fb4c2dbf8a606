#pragma once

#include <string>

namespace scrivo {

// Appends one record and CR LF to a log, in the ANSI code page. The file is opened and closed for
// each record, so that others may read or delete it at any time and it survives a crash up to its
// last complete record. Errors as Files::Append.
void AppendLogRecord(const std::string& path, const std::string& record);

// The date and time that begin a record: the system's short texts joined by " - ".
std::string LogTimeText();

}  // namespace scrivo
