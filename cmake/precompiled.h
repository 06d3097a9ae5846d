#pragma once

// Headers that most sources include. Expensive headers that few sources need cost more here than they save.

#include <algorithm>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QHash>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QProcess>
#include <QPushButton>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QStringList>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimer>
#include <QWizard>
