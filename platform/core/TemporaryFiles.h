#pragma once

#include <cstddef>
#include <string>

// A writer fills a temporary file beside the file it replaces and renames it into place. The
// temporary's name says whose it is, "<file>.tmp-<process>-XXXXXX", so that one left behind
// by a writer that died can be told from one a live writer is filling.

// The pattern for mkstemp: the X's become the file's own letters.
std::string temporaryFilePattern(const std::string& path);

// How much longer than the file's name a temporary's name gets, at the most.
inline constexpr std::size_t kTemporarySuffixLength = sizeof(".tmp-4194304-XXXXXX") - 1;

// Removes the temporaries of the file whose writers no longer run; never the file itself, its
// lock or any other file beside it.
void removeAbandonedTemporaries(const std::string& path);
