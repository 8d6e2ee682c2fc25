#pragma once

#include <string>
#include <string_view>

namespace orva {

/// What --version prints: program, version, commit it was built from, vectors that it calculates
/// with here: "orva 1.0.0 (commit 1a2b3c4d, AVX2)".
std::string versionText(std::string_view program);

} // namespace orva
