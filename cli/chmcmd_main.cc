// The program hhc-chmcmd: takes the command line of the vendor's compiler and has chmcmd do the
// work.

#include <filesystem>
#include <iostream>

#include "cli/chmcmd_run.h"
#include "system/interruption.h"
#include "system/services.h"

int main(int argc, char** argv) {
  if (argc != 2) {
    std::cout << "usage: hhc-chmcmd PROJECT.hhp" << std::endl;
    return 0;  // as the vendor's: not made
  }
  try {
    scrivo::CatchInterruptions();  // so that the temporary project is removed
    scrivo::TheServices() = scrivo::CreateSystemServices();
    return scrivo::CompileWithChmcmd(std::filesystem::absolute(argv[1]).string(), std::cout);
  } catch (const std::exception& exception) {
    std::cout << "HHC7002: Error: " << exception.what() << std::endl;
    return 0;
  }
}
