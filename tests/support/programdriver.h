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

/// In a Qt Test function: takes a step with \a driver; if it fails, so does the test, in the driver's words.
#define ZV_DRIVE(driver, step)                                                                               \
    do {                                                                                                     \
        if (!(driver).step)                                                                                  \
            QFAIL(qPrintable((driver).failure()));                                                           \
    } while (false)

/// Starts a program and uses it as a person does: looks at its windows, moves the mouse, types.
///
/// It needs a desktop around it (the script `desktop` beside this file) and a QCoreApplication. Steps wait
/// until what they need is on the screen, and keep the local event loop running meanwhile. A step that fails
/// returns false (or null) and failure() says what was expected and what was there instead.
///
/// On a Wayland desktop there is neither mouse nor keyboard: click() and fill() have the program act by its
/// accessibility interfaces, as assistive technologies do. Other steps that take a mouse, a key or a picture
/// fail.
class ProgramDriver
{
public:
    ProgramDriver();
    /// Ends the program if it still runs.
    ~ProgramDriver();
    Q_DISABLE_COPY_MOVE(ProgramDriver)

    /// The program's home folder; without it the program gets a fresh one that goes away with the driver.
    void setHome(const QString &folder);
    /// The folder the program is started in; without it the home folder.
    void setWorkingFolder(const QString &folder);
    /// Gives the program the environment variable \a name; a null \a value takes it away.
    void setEnvironment(const QString &name, const QString &value);
    /// How long steps wait if they are not told otherwise; at first 20 seconds.
    void setPatience(std::chrono::milliseconds patience) { _patience = patience; }

    /// Starts \a program. False if it can't be started, or if there is no desktop to drive it on.
    bool start(const QString &program, const QStringList &arguments = {});
    bool isRunning() const { return _process.state() == QProcess::Running; }
    /// The process id of the program while it runs, otherwise 0.
    qint64 processId() const { return _process.processId(); }
    /// Waits until the program has ended by itself. False if it goes on or has crashed.
    bool waitForEnd();
    /// The exit code of the ended program; -1 if it runs, or was ended by a signal.
    int exitCode() const;
    /// Ends the program: asks it, and insists after five seconds.
    void terminate();
    /// All the program has written to standard output so far.
    QByteArray output() const { return _output; }
    /// All the program has written to standard error so far.
    QByteArray errorOutput() const { return _errorOutput; }

    /// Waits until \a query fits something.
    bool waitFor(const WidgetQuery &query);
    bool waitFor(const WidgetQuery &query, std::chrono::milliseconds patience);
    /// Waits until \a query fits nothing.
    bool waitUntilGone(const WidgetQuery &query);
    /// Waits until \a condition holds; \a expectation says in words what is waited for.
    bool waitUntil(const std::function<bool()> &condition, const QString &expectation);
    /// What fits \a query best at this moment, if anything does.
    std::optional<Widget> find(const WidgetQuery &query);
    /// The names of all that fit \a query at this moment, such as the texts of rows, from top to bottom.
    QStringList names(const WidgetQuery &query);
    /// Waits for \a query; then what a field or view holds, or the name of anything else. Null on failure.
    QString text(const WidgetQuery &query);

    /// Clicks with the left button, once it can be clicked: at rest, enabled (unless the query asks for
    /// something disabled), and not covered by another window. Rows out of sight are scrolled to.
    bool click(const WidgetQuery &query);
    /// Double-clicks likewise until \a happens. On a starved computer the two clicks may come too far apart,
    /// and a person tries again then.
    bool doubleClick(const WidgetQuery &query, const std::function<bool()> &happens);
    /// Presses the left button on \a from, moves to \a to, and releases it there.
    bool drag(const WidgetQuery &from, const WidgetQuery &to);
    /// Types \a text where the keyboard is; waits for the program to have it.
    bool typeText(const QString &text);
    /// Presses a key such as "Return", "ctrl+a" or "shift+Tab" where the keyboard is.
    bool pressKey(const QString &name);
    /// Clicks into a text field, and types \a text in place of all that was there.
    bool fill(const WidgetQuery &field, const QString &text);
    /// Answers a save-file dialog that is about to open: gives it the file name \a path and saves.
    bool saveAs(const QString &path);

    /// Brings the window titled \a title to the front, as its entry in a task bar does.
    bool activateWindow(const QString &title);
    /// Closes the window titled \a title, as the button in its frame does.
    bool closeWindow(const QString &title);
    /// Drags the window titled \a title by its frame until its corner (inside the frame) is at \a corner.
    bool dragWindow(const QString &title, const QPoint &corner);

    /// Saves a picture of the whole screen as PNG. False if it can't be written.
    bool screenshot(const QString &path);
    /// Saves a picture of the window titled \a title, with its frame.
    bool screenshot(const QString &path, const QString &title);
    /// What the program shows at this moment, as an indented list.
    QString describeScreen();
    /// Leaves in \a folder what explains a failure: screen.png, screen.txt, stdout.txt, stderr.txt.
    void leaveEvidence(const QString &folder);
    /// Why the last step that failed did so.
    QString failure() const { return _failure; }

    /// Lets \a time pass with the local event loop running; for shows, not for tests.
    static void pause(std::chrono::milliseconds time);

private:
    bool connectToDesktop();
    bool isOnWayland() const { return _tree && !_display; }
    bool lacksInput();
    bool fail(const QString &message);
    bool waitUntil(const std::function<bool()> &condition, const QString &expectation,
                   std::chrono::milliseconds patience);
    std::optional<Widget> await(const WidgetQuery &query, std::chrono::milliseconds patience);
    std::optional<Screen> readScreen();
    Screen screen();
    std::optional<XWindow> windowTitled(const QString &title) const;
    std::optional<XWindow> awaitWindow(const QString &title);
    bool act(const WidgetQuery &query, const std::function<bool(const Widget &)> &action);
    bool waitForKeyboard();
    void settle();
    void fetchLostKeyboard();

    bool pointAt(const WidgetQuery &query);
    std::optional<QPoint> clickablePoint(const WidgetQuery &query, QString *obstacle);
    bool bringIntoSight(const Widget &row, const Widget &list);
    QString coverOf(const Widget &window, const QPoint &point) const;

    QProcess _process;
    QProcessEnvironment _environment;
    std::unique_ptr<QTemporaryDir> _ownHome;
    QString _home;
    QString _workingFolder;
    QByteArray _output;
    QByteArray _errorOutput;
    QString _failure;
    std::chrono::milliseconds _patience{20000};
    std::unique_ptr<XDisplay> _display; ///< null on a Wayland desktop
    std::unique_ptr<AccessibleTree> _tree;
    std::unique_ptr<XInput> _input;
    QRect _lastRect; ///< of what is about to be clicked: it has to be the same twice
    QPoint _lastClickPoint{-1000, -1000};
    std::chrono::steady_clock::time_point _lastClick;
    std::chrono::steady_clock::time_point _keyboardSeen; ///< when a window last had it, or there was none
};
