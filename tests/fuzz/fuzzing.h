#pragma once

#include <QString>

/// What the fuzz targets share.
namespace Fuzzing
{
/// Ends the program, which makes the input at hand a finding, unless \a holds.
void require(bool holds, const char *what);

/// Whether a root of this name is one of the four that the controller knows.
bool isKnownRoot(QStringView name);

/// Whether the controller returns from \a document. A root that is none of the four makes it loop forever,
/// which is kept; such a document is kept out of the fuzzing, and nothing else is. A target returns -1 for an
/// input with one, which keeps it out of the corpus; libFuzzers before clang 16 ignore that.
bool comesBack(const QString &document);
} // namespace Fuzzing
