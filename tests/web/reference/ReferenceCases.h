#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One reference picture and how to make it again with our engine (see
// scripts/reference/regenerate-references.mjs, which writes the list).
struct ReferenceCase {
    std::string picture;   // file name without .png in data/chromium
    std::string source;    // script file, relative to the source tree
    std::string arguments; // theme call arguments, empty when the file is evaluated as it stands
    int channelTolerance = 0;
    double allowedShare = 0.0;
    std::string sourceHash;
};

// Lines that do not parse are skipped; comments start with '#'.
std::vector<ReferenceCase> parseReferenceCases(std::string_view text);
std::vector<ReferenceCase> loadReferenceCases(const std::string& path);

// 64-bit FNV-1a in sixteen lower-case hex digits, as the regenerating script writes it.
std::string fnv1aHex(std::string_view bytes);

// The text evaluated for a case: a theme call ("(function" script ")" arguments) or the script.
std::string evaluationText(const ReferenceCase& c, const std::string& script);
