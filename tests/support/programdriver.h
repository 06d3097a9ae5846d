#pragma once

#include "tests/support/accessibletree.h"
#include "tests/support/widgetquery.h"
#include "tests/support/xdisplay.h"
#include "tests/support/xinput.h"

#include <QProcess>
#include <QTemporaryDir>

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

/// For Qt Test functions: executes a step with \a driver. If it fails, the test fails with the driver's
/// message.
#define ZV_DRIVE(driver, step)                                                                               \
    do {                                                                                                     \
        if (!(driver).step)                                                                                  \
            QFAIL(qPrintable((driver).failure()));                                                           \
    } while (false)

/// Starts a program and uses it as a user does: reads its windows, moves the mouse, types.
///
/// It needs a desktop (see the script `desktop` in this folder) and a QCoreApplication. A step waits until
/// the widgets that it needs are on the screen and keeps the local event loop running meanwhile. A step that
/// fails returns false (or null), and failure() returns what was expected and what was found instead.
///
/// A Wayland desktop has neither mouse nor keyboard: click() and fill() use the program's accessibility
/// interfaces, as assistive technologies do. Other steps that need a mouse, a key or a screenshot fail.
class ProgramDriver
{
public:
    ProgramDriver();
    /// Ends the program if it is still running.
    ~ProgramDriver();
    Q_DISABLE_COPY_MOVE(ProgramDriver)

    /// Sets the program's home folder. The default is a new folder that is removed together with the driver.
    void setHome(const QString &folder);
    /// Sets the program's working directory. The default is the home folder.
    void setWorkingFolder(const QString &folder);
    /// Sets the environment variable \a name for the program; a null \a value removes it.
    void setEnvironment(const QString &name, const QString &value);
    /// Sets the timeout of steps; initially 20 seconds.
    void setTimeout(std::chrono::milliseconds timeout) { _timeout = timeout; }

    /// Starts \a program. Returns false if it cannot be started or if there is no desktop.
    bool start(const QString &program, const QStringList &arguments = {});
    bool isRunning() const { return _process.state() == QProcess::Running; }
    /// The process id of the program while it runs, otherwise 0.
    qint64 processId() const { return _process.processId(); }
    /// Waits until the program ends by itself. Returns false if it keeps running or has crashed.
    bool waitForEnd();
    /// The exit code of the ended program; -1 if it is running or was ended by a signal.
    int exitCode() const;
    /// Ends the program: asks it to end, and kills it after five seconds.
    void terminate();
    /// The program's standard output so far.
    QByteArray output() const { return _output; }
    /// The program's standard error output so far.
    QByteArray errorOutput() const { return _errorOutput; }

    /// Waits until \a query has a match.
    bool waitFor(const WidgetQuery &query);
    /// Waits until \a query has no match.
    bool waitUntilGone(const WidgetQuery &query);
    /// Waits until \a condition returns true; \a expectation describes it in messages.
    bool waitUntil(const std::function<bool()> &condition, const QString &expectation);
    /// The best match of \a query at this moment, if any.
    std::optional<Widget> find(const WidgetQuery &query);
    /// The names of all matches of \a query at this moment, such as the texts of rows, from top to bottom.
    QStringList names(const WidgetQuery &query);
    /// Waits for \a query. Returns the contents of a field or view, or the name of any other widget; null on
    /// failure.
    QString text(const WidgetQuery &query);

    /// Clicks with the left button as soon as the widget is at rest, enabled and not covered by another
    /// window.
    bool click(const WidgetQuery &query);
    /// Double-clicks in the same way until \a happens. On a busy machine the two clicks may be too far apart;
    /// like a user, it then tries again.
    bool doubleClick(const WidgetQuery &query, const std::function<bool()> &happens);
    /// Presses the left button on \a from, moves to \a to, and releases it there.
    bool drag(const WidgetQuery &from, const WidgetQuery &to);
    /// Types \a text into the focused widget; waits until the program has received it.
    bool typeText(const QString &text);
    /// Presses a key such as "Return", "ctrl+a" or "shift+Tab" in the focused widget.
    bool pressKey(const QString &name);
    /// Clicks into a text field and replaces its contents with \a text.
    bool fill(const WidgetQuery &field, const QString &text);
    /// Answers a save-file dialog that is about to open: enters the file name \a path and saves.
    bool saveAs(const QString &path);

    /// Brings the window titled \a title to the front, as its entry in a task bar does.
    bool activateWindow(const QString &title);
    /// Closes the window titled \a title, as the button in its frame does.
    bool closeWindow(const QString &title);

    /// Saves a screenshot of the whole screen as PNG. Returns false if it cannot be written.
    bool screenshot(const QString &path);
    /// Saves a screenshot of the window titled \a title, with its frame.
    bool screenshot(const QString &path, const QString &title);
    /// What the program shows at this moment, as an indented list.
    QString describeScreen();
    /// Saves files that help to explain a failure in \a folder: screen.png, screen.txt, stdout.txt,
    /// stderr.txt.
    void saveDiagnostics(const QString &folder);
    /// Why the last failed step has failed.
    QString failure() const { return _failure; }

    /// Waits for \a time with the local event loop running. For demos, not for tests.
    static void pause(std::chrono::milliseconds time);

private:
    bool connectToDesktop();
    bool isOnWayland() const { return _tree && !_display; }
    bool lacksInput();
    bool fail(const QString &message);
    bool waitUntil(const std::function<bool()> &condition, const QString &expectation,
                   std::chrono::milliseconds timeout);
    std::optional<Widget> await(const WidgetQuery &query);
    std::optional<Screen> readScreen();
    Screen screen();
    std::optional<XWindow> windowTitled(const QString &title) const;
    std::optional<XWindow> awaitWindow(const QString &title);
    bool act(const WidgetQuery &query, const std::function<bool(const Widget &)> &action);
    bool repeat(const std::function<bool()> &step, const std::function<bool()> &happens,
                const QString &expectation);
    bool waitForKeyboard();
    void settle();
    void restoreKeyboardFocus();

    bool pointAt(const WidgetQuery &query);
    QString obstacleOf(const WidgetQuery &query);
    bool isCovered(const Widget &window, const QPoint &point) const;

    QProcess _process;
    QProcessEnvironment _environment;
    std::unique_ptr<QTemporaryDir> _ownHome;
    QString _home;
    QString _workingFolder;
    QByteArray _output;
    QByteArray _errorOutput;
    QString _failure;
    std::chrono::milliseconds _timeout{20000};
    std::unique_ptr<XDisplay> _display; ///< null on a Wayland desktop
    std::unique_ptr<AccessibleTree> _tree;
    std::unique_ptr<XInput> _input;
    QRect _lastRect; ///< of the widget to click: it must be the same twice
    /// When a window last had the focus, or when restoreKeyboardFocus() last tried to restore it.
    std::chrono::steady_clock::time_point _focusSeen;
};
