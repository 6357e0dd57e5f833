#pragma once

#include <string>

namespace tavelo::recognition::sherpa {

struct Functions;

/// Whether a library reads our structures as we write them. Returns why not; empty when it does.
///
/// A child process gives the library a configuration with marks in it and has it print what it reads; a wrong
/// layout may crash there. Takes 5 s at most.
std::string confirmLayout(const Functions& library);

}  // namespace tavelo::recognition::sherpa
