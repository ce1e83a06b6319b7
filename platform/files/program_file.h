#pragma once

#include <string>

namespace platform {

/// The path of the running program's file; empty when the system does not tell.
std::string programFile();

/// Which folder is the bundle of the program in this file: see NSBundle::mainBundle.
std::string bundleOfProgram(const std::string& file);

}
