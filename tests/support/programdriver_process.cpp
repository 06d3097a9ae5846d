#include "tests/support/programdriver.h"

#include <QDir>
#include <QFile>

namespace
{

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

} // namespace

ProgramDriver::ProgramDriver()
    : _environment(QProcessEnvironment::systemEnvironment())
{
    // The program must find its settings in its own home folder, not in the caller's.
    for (const char *name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
        _environment.remove(QString::fromLatin1(name));

    _process.setStandardInputFile(QProcess::nullDevice());
    QObject::connect(&_process, &QProcess::readyReadStandardOutput, &_process,
                     [this] { _output += _process.readAllStandardOutput(); });
    QObject::connect(&_process, &QProcess::readyReadStandardError, &_process,
                     [this] { _errorOutput += _process.readAllStandardError(); });
}

ProgramDriver::~ProgramDriver()
{
    terminate();
}

void ProgramDriver::setHome(const QString &folder)
{
    _home = folder;
}

void ProgramDriver::setWorkingFolder(const QString &folder)
{
    _workingFolder = folder;
}

void ProgramDriver::setEnvironment(const QString &name, const QString &value)
{
    if (value.isNull())
        _environment.remove(name);
    else
        _environment.insert(name, value);
}

bool ProgramDriver::connectToDesktop()
{
    if (_tree)
        return true;
    auto tree = std::make_unique<AccessibleTree>();
    if (!tree->error().isEmpty())
        return fail(
            QStringLiteral("There is no accessibility bus (%1). Run this inside tests/support/desktop.")
                .arg(tree->error()));
    if (qEnvironmentVariable("QT_QPA_PLATFORM") != QLatin1String("wayland")) {
        auto display = std::make_unique<XDisplay>();
        if (!display->isOpen())
            return fail(QStringLiteral("There is no X display. Run this inside tests/support/desktop."));
        _display = std::move(display);
        _input = std::make_unique<XInput>(*_display);
    }
    _tree = std::move(tree);
    return true;
}

/// Returns true, and makes the current step fail, if there is no mouse and keyboard.
bool ProgramDriver::lacksInput()
{
    return isOnWayland() &&
           !fail(QStringLiteral("Mouse, keyboard and screenshots are not available on a Wayland desktop."));
}

bool ProgramDriver::start(const QString &program, const QStringList &arguments)
{
    if (!connectToDesktop())
        return false;
    if (isRunning())
        return fail(QStringLiteral("%1 is already running").arg(_process.program()));
    if (_home.isEmpty()) {
        _ownHome = std::make_unique<QTemporaryDir>();
        _home = _ownHome->path();
    }
    _environment.insert(QStringLiteral("HOME"), _home);
    _process.setProcessEnvironment(_environment);
    _process.setWorkingDirectory(_workingFolder.isEmpty() ? _home : _workingFolder);
    _output.clear();
    _errorOutput.clear();
    _process.start(program, arguments);
    if (!_process.waitForStarted())
        return fail(QStringLiteral("cannot start %1: %2").arg(program, _process.errorString()));
    return true;
}

bool ProgramDriver::waitForEnd()
{
    // waitUntil() cannot be used here: it treats the end of the program as a failure.
    for (const auto end = std::chrono::steady_clock::now() + _timeout;
         isRunning() && std::chrono::steady_clock::now() < end;)
        pause(std::chrono::milliseconds(10));
    if (isRunning())
        return fail(QStringLiteral("Expected: the program ends. It shows:\n") + describeScreen());
    if (_process.exitStatus() == QProcess::CrashExit)
        return fail(QStringLiteral("The program was ended by signal %1").arg(_process.exitCode()));
    return true;
}

int ProgramDriver::exitCode() const
{
    return isRunning() || _process.exitStatus() == QProcess::CrashExit ? -1 : _process.exitCode();
}

void ProgramDriver::terminate()
{
    if (!isRunning())
        return;
    _process.terminate();
    if (!_process.waitForFinished(5000)) {
        _process.kill();
        _process.waitForFinished();
    }
}

QString ProgramDriver::describeScreen()
{
    return isRunning() ? describe(screen()) : QStringLiteral("(the program does not run)\n");
}

bool ProgramDriver::screenshot(const QString &path)
{
    if (!connectToDesktop() || lacksInput())
        return false;
    return _display->screenshot().save(path, "PNG") || fail(QStringLiteral("cannot write %1").arg(path));
}

bool ProgramDriver::screenshot(const QString &path, const QString &title)
{
    const auto window = awaitWindow(title);
    return (window && _display->screenshot(window->frameRect).save(path, "PNG")) ||
           fail(QStringLiteral("cannot save a screenshot of \"%1\" as %2").arg(title, path));
}

void ProgramDriver::saveDiagnostics(const QString &folder)
{
    QDir().mkpath(folder);
    const QDir target(folder);
    screenshot(target.filePath(QStringLiteral("screen.png")));
    writeFile(target.filePath(QStringLiteral("screen.txt")), describeScreen().toUtf8());
    writeFile(target.filePath(QStringLiteral("stdout.txt")), _output);
    writeFile(target.filePath(QStringLiteral("stderr.txt")), _errorOutput);
}
