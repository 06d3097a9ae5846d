#pragma once

#include <QStringList>

/// What this process's open descriptors lead to, one entry each, sorted: paths, or such as
/// "anon_inode:[eventpoll]".
QStringList openDescriptors();
