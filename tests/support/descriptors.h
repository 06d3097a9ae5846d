#pragma once

#include <QStringList>

/// The targets of this process's open descriptors, one entry each, sorted: paths, or entries such as
/// "anon_inode:[eventpoll]".
QStringList openDescriptors();
