#pragma once

#include <QString>

/// Functions that the fuzz targets share.
namespace Fuzzing
{
/// Unless \a holds, ends the program, which makes the current input a finding.
void require(bool holds, const char *what);

/// Returns whether a root of this name is one of the four that the controller knows.
bool isKnownRoot(QStringView name);

/// Returns whether the controller returns from \a document. A root that is none of the four makes it loop
/// forever, which is kept. Such documents are excluded from fuzzing, and nothing else is. A target returns -1
/// for an input with such a document, which keeps the input out of the corpus; libFuzzer before clang 16
/// ignores the return value.
bool controllerReturns(const QString &document);
} // namespace Fuzzing
