#pragma once

#include <QString>

/// What the fuzz targets share.
namespace Fuzzing
{
/// Ends the program, which makes the input at hand a finding, unless \a holds.
void require(bool holds, const char *what);

/// Whether the controller comes back from \a document. A root that is none of the four it knows holds it for
/// good, which is kept; such a document is kept out of the fuzzing, and nothing else is. A target answers -1
/// to an input with one, which keeps it out of the corpus; libFuzzers before clang 16 don't heed that.
bool comesBack(const QString &document);
} // namespace Fuzzing
