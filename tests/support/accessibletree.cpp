#include "tests/support/accessibletree.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QUuid>

namespace
{

constexpr int answerWithin = 15000; // ms; far more than a sanitized program needs on a loaded machine

// Numbers of the accessibility protocol.
enum Role {
    RoleCheckBox = 7,
    RoleLabel = 29,
    RoleList = 31,
    RoleListItem = 32,
    RolePasswordText = 40,
    RoleProgressBar = 42,
    RolePushButton = 43,
    RoleTerminal = 60,
    RoleText = 61,
    RoleEntry = 79,
    RoleStatic = 116
};
enum State {
    StateActive = 1,
    StateChecked = 4,
    StateEnabled = 8,
    StateFocused = 12,
    StateMultiLine = 17,
    StateSelected = 23,
    StateShowing = 25
};

constexpr QLatin1String accessibleInterface("org.a11y.atspi.Accessible");
constexpr QLatin1String rootPath("/org/a11y/atspi/accessible/root");

/// Where an object of the tree lives: a program's bus name and a path in it.
struct Reference {
    QString service;
    QDBusObjectPath path;
};

const QDBusArgument &operator>>(const QDBusArgument &argument, Reference &reference)
{
    argument.beginStructure();
    argument >> reference.service >> reference.path;
    argument.endStructure();
    return argument;
}

/// The first value of an answer; invalid if the question failed, for example because the object is gone.
QVariant answer(QDBusPendingCall call)
{
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QVariant value = reply.arguments().constFirst();
    return value.metaType() == QMetaType::fromType<QDBusVariant>() ? value.value<QDBusVariant>().variant()
                                                                   : value;
}

WidgetKind kindOf(uint role, quint64 states)
{
    const bool hasManyLines = (states >> StateMultiLine & 1) != 0;
    switch (role) {
    case RoleCheckBox:
        return WidgetKind::CheckBox;
    case RoleLabel:
    case RoleStatic:
        return hasManyLines ? WidgetKind::TextView : WidgetKind::Label; // a text browser calls itself a label
    case RoleList:
        return WidgetKind::List;
    case RoleListItem:
        return WidgetKind::Row;
    case RoleProgressBar:
        return WidgetKind::ProgressBar;
    case RolePushButton:
        return WidgetKind::Button;
    case RoleText:
    case RoleEntry:
    case RolePasswordText:
    case RoleTerminal:
        return hasManyLines ? WidgetKind::TextView : WidgetKind::TextField;
    default:
        return WidgetKind::Other;
    }
}

void setStates(Widget &widget, quint64 states)
{
    const auto has = [states](State state) { return (states >> state & 1) != 0; };
    widget.enabled = has(StateEnabled);
    widget.showing = has(StateShowing);
    widget.checked = has(StateChecked);
    widget.focused = has(StateFocused);
    widget.selected = has(StateSelected);
    widget.active = has(StateActive);
}

} // namespace

/// A widget's place on the bus, kept beside it while the tree is read.
struct AccessibleTree::Object {
    QString path;
    QList<Reference> children;
};

/// The questions of one widget that are under way.
struct AccessibleTree::Questions {
    QString path;
    int parent;
    QDBusPendingCall role;
    QDBusPendingCall states;
    QDBusPendingCall name;
    QDBusPendingCall children;
};

AccessibleTree::AccessibleTree()
    : _bus(QString())
    , _busName(QUuid::createUuid().toString())
{
    const QDBusMessage question =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(question, QDBus::Block, answerWithin);
    if (reply.type() == QDBusMessage::ReplyMessage) {
        _bus = QDBusConnection::connectToBus(reply.arguments().value(0).toString(), _busName);
        _error = _bus.isConnected() ? QString() : _bus.lastError().message();
    } else {
        _error = reply.errorMessage();
    }
}

AccessibleTree::~AccessibleTree()
{
    QDBusConnection::disconnectFromBus(_busName);
}

QDBusPendingCall AccessibleTree::ask(const QString &path, const QString &interface, const QString &method,
                                     const QVariantList &arguments) const
{
    QDBusMessage question = QDBusMessage::createMethodCall(_service, path, interface, method);
    question.setArguments(arguments);
    return _bus.asyncCall(question, answerWithin);
}

AccessibleTree::Questions AccessibleTree::questionsAbout(const QString &path) const
{
    return {path,
            -1,
            ask(path, accessibleInterface, QStringLiteral("GetRole")),
            ask(path, accessibleInterface, QStringLiteral("GetState")),
            ask(path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                {accessibleInterface, QStringLiteral("Name")}),
            ask(path, accessibleInterface, QStringLiteral("GetChildren"))};
}

bool AccessibleTree::findProgram(qint64 pid)
{
    if (_pid == pid && !_service.isEmpty())
        return true;
    _pid = pid;
    _service = QStringLiteral("org.a11y.atspi.Registry");
    const auto programs = qdbus_cast<QList<Reference>>(
        answer(ask(rootPath, accessibleInterface, QStringLiteral("GetChildren"))));
    _service.clear();
    for (const Reference &program : programs) {
        if (_bus.interface()->servicePid(program.service).value() == pid)
            _service = program.service;
    }
    return !_service.isEmpty();
}

std::optional<Screen> AccessibleTree::read(qint64 pid)
{
    if (!_bus.isConnected() || !findProgram(pid))
        return {};
    const QVariant windows = answer(ask(rootPath, accessibleInterface, QStringLiteral("GetChildren")));
    if (!windows.isValid()) {
        _service.clear(); // the program is gone; another may come with this process id
        return {};
    }
    Screen screen;
    QList<Object> objects = {{rootPath, qdbus_cast<QList<Reference>>(windows)}};
    // Index 0 of objects is the program itself, which is no widget: objects[i + 1] belongs to screen[i].
    for (int first = 0; first < objects.size();) {
        const int next = int(objects.size());
        readLevel(screen, objects, first);
        first = next;
    }
    readRectsAndTexts(screen, objects);
    return screen;
}

/// Adds the children of objects[first] and all after it.
void AccessibleTree::readLevel(Screen &screen, QList<Object> &objects, int first) const
{
    QList<Questions> level;
    for (int i = first; i < objects.size(); ++i) {
        for (const Reference &child : objects.at(i).children) {
            level << questionsAbout(child.path.path());
            level.last().parent = i - 1;
        }
    }
    for (const Questions &asked : level) {
        const auto words = qdbus_cast<QList<uint>>(answer(asked.states));
        if (words.size() < 2)
            continue;
        const quint64 states = words.at(0) | quint64(words.at(1)) << 32;
        Widget widget;
        widget.kind = kindOf(answer(asked.role).toUInt(), states);
        setStates(widget, states);
        // A hidden page is skipped whole; a row scrolled out of sight is hidden too, but one can get at it.
        if (!widget.showing && widget.kind != WidgetKind::Row)
            continue;
        widget.object = asked.path;
        widget.name = widget.text = answer(asked.name).toString();
        widget.parent = asked.parent;
        widget.window = asked.parent < 0 ? int(screen.size()) : screen.at(asked.parent).window;
        if (asked.parent < 0)
            widget.kind = WidgetKind::Window;
        screen << widget;
        objects << Object{asked.path, widget.kind == WidgetKind::Row
                                          ? QList<Reference>()
                                          : qdbus_cast<QList<Reference>>(answer(asked.children))};
    }
}

void AccessibleTree::readRectsAndTexts(Screen &screen, const QList<Object> &objects) const
{
    constexpr uint screenCoordinates = 0;
    QList<QDBusPendingCall> rects;
    QHash<int, QDBusPendingCall> texts;
    for (int i = 0; i < screen.size(); ++i) {
        const QString &path = objects.at(i + 1).path;
        rects << ask(path, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GetExtents"),
                     {screenCoordinates});
        // Only what is known to hold text is asked for it: any other question makes the program log a
        // warning.
        if (screen.at(i).kind == WidgetKind::TextField || screen.at(i).kind == WidgetKind::TextView)
            texts.insert(
                i, ask(path, QStringLiteral("org.a11y.atspi.Text"), QStringLiteral("GetText"), {0, -1}));
    }
    for (int i = 0; i < screen.size(); ++i)
        screen[i].rect = qdbus_cast<QRect>(answer(rects.at(i)));
    for (auto text = texts.cbegin(); text != texts.cend(); ++text)
        screen[text.key()].text = answer(text.value()).toString();
}

bool AccessibleTree::act(const Widget &widget) const
{
    constexpr int first = 0; // what a click does comes before what moves the focus and the like
    return answer(ask(widget.object, QStringLiteral("org.a11y.atspi.Action"), QStringLiteral("DoAction"),
                      {first}))
        .toBool();
}

bool AccessibleTree::setText(const Widget &widget, const QString &text) const
{
    return answer(ask(widget.object, QStringLiteral("org.a11y.atspi.EditableText"),
                      QStringLiteral("SetTextContents"), {text}))
        .toBool();
}
