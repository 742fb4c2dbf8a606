#pragma once

namespace scrivo {

// From this call on, a request to end the program (Ctrl-C, the terminal closed, a termination
// signal) no longer ends it but is remembered, so that the program can put things in order first:
// what it reads and begins then fails with Error kUserInterrupt, "Interrupted", a child process
// that is being read from is ended, and removing files goes on working. A request that is being
// ignored when this is called (nohup) stays ignored.
void CatchInterruptions();

// Whether such a request has come. Never true before CatchInterruptions.
bool Interrupted();

}  // namespace scrivo
