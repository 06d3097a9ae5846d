#include "tests/support/accessibletree.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QUuid>

namespace
{

constexpr int replyTimeoutMs = 15000; // far more than a sanitized program needs on a loaded machine

// Numeric constants of the accessibility protocol.
enum Role {
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
    StateEnabled = 8,
    StateFocused = 12,
    StateMultiLine = 17,
    StateSelected = 23,
    StateShowing = 25
};

constexpr QLatin1String accessibleInterface("org.a11y.atspi.Accessible");
constexpr QLatin1String rootPath("/org/a11y/atspi/accessible/root");

/// The location of an object of the tree: a program's bus name and a path in it.
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

/// The first value of a reply; invalid if the request failed, for example because the object is gone.
QVariant replyValue(QDBusPendingCall call)
{
    call.waitForFinished();
    const QDBusMessage reply = call.reply();
    if (reply.type() != QDBusMessage::ReplyMessage || reply.arguments().isEmpty())
        return {};
    const QVariant value = reply.arguments().constFirst();
    return value.metaType() == QMetaType::fromType<QDBusVariant>() ? value.value<QDBusVariant>().variant()
                                                                   : value;
}

WidgetKind kindOf(uint role, bool hasManyLines)
{
    switch (role) {
    case RoleLabel:
    case RoleStatic:
        return hasManyLines ? WidgetKind::TextView
                            : WidgetKind::Label; // a text browser reports the role of a label
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

/// Returns true if the children of widgets of this kind are read.
bool canHaveChildren(WidgetKind kind)
{
    return kind == WidgetKind::Window || kind == WidgetKind::List || kind == WidgetKind::Other;
}

} // namespace

/// The location of a widget on the bus and of its children, needed only while the tree is read.
struct AccessibleTree::Object {
    QString path;
    QList<Reference> children;
};

/// The pending requests for one widget.
struct AccessibleTree::PendingRequests {
    QString path;
    int parent;
    std::optional<QDBusPendingCall> role; ///< of a new widget
    QDBusPendingCall states;
    QDBusPendingCall name;
    std::optional<QDBusPendingCall> children; ///< of a widget that is new or may have children
};

AccessibleTree::AccessibleTree()
    : _bus(QString())
    , _busName(QUuid::createUuid().toString())
{
    const QDBusMessage request =
        QDBusMessage::createMethodCall(QStringLiteral("org.a11y.Bus"), QStringLiteral("/org/a11y/bus"),
                                       QStringLiteral("org.a11y.Bus"), QStringLiteral("GetAddress"));
    const QDBusMessage reply = QDBusConnection::sessionBus().call(request, QDBus::Block, replyTimeoutMs);
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

QDBusPendingCall AccessibleTree::callAsync(const QString &path, const QString &interface,
                                           const QString &method, const QVariantList &arguments) const
{
    QDBusMessage request = QDBusMessage::createMethodCall(_service, path, interface, method);
    request.setArguments(arguments);
    return _bus.asyncCall(request, replyTimeoutMs);
}

AccessibleTree::PendingRequests AccessibleTree::requestsFor(const QString &path) const
{
    const auto role = _roles.constFind(path);
    const bool isNew = role == _roles.constEnd();
    PendingRequests requests = {path,
                                -1,
                                {},
                                callAsync(path, accessibleInterface, QStringLiteral("GetState")),
                                callAsync(path, QStringLiteral("org.freedesktop.DBus.Properties"),
                                          QStringLiteral("Get"),
                                          {accessibleInterface, QStringLiteral("Name")}),
                                {}};
    if (isNew)
        requests.role = callAsync(path, accessibleInterface, QStringLiteral("GetRole"));
    if (isNew || canHaveChildren(kindOf(*role, false)))
        requests.children = callAsync(path, accessibleInterface, QStringLiteral("GetChildren"));
    return requests;
}

bool AccessibleTree::findProgram(qint64 pid)
{
    if (_pid == pid && !_service.isEmpty())
        return true;
    _pid = pid;
    _service = QStringLiteral("org.a11y.atspi.Registry");
    const auto programs = qdbus_cast<QList<Reference>>(
        replyValue(callAsync(rootPath, accessibleInterface, QStringLiteral("GetChildren"))));
    _service.clear();
    _roles.clear();
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
    const QVariant windows =
        replyValue(callAsync(rootPath, accessibleInterface, QStringLiteral("GetChildren")));
    if (!windows.isValid()) {
        _service.clear(); // the program is gone; another one may get this process id
        return {};
    }
    Screen screen;
    QList<Object> objects = {{rootPath, qdbus_cast<QList<Reference>>(windows)}};
    // objects[0] is the program itself, which is not a widget, so objects[i + 1] belongs to screen[i].
    for (int first = 0; first < objects.size();) {
        const int next = int(objects.size());
        readLevel(screen, objects, first);
        first = next;
    }
    readRectsAndTexts(screen, objects);
    return screen;
}

/// Adds the children of objects[first] and of all objects after it.
void AccessibleTree::readLevel(Screen &screen, QList<Object> &objects, int first)
{
    QList<PendingRequests> level;
    for (int i = first; i < objects.size(); ++i) {
        for (const Reference &child : objects.at(i).children) {
            level << requestsFor(child.path.path());
            level.last().parent = i - 1;
        }
    }
    for (const PendingRequests &pending : level) {
        const auto words = qdbus_cast<QList<uint>>(replyValue(pending.states));
        if (words.size() < 2)
            continue;
        const quint64 states = words.at(0) | quint64(words.at(1)) << 32;
        if (pending.role)
            _roles.insert(pending.path, replyValue(*pending.role).toUInt());
        const auto has = [states](State state) { return (states >> state & 1) != 0; };
        if (!has(StateShowing))
            continue; // such as a hidden page, with its contents
        Widget widget;
        widget.kind = kindOf(_roles.value(pending.path), has(StateMultiLine));
        widget.enabled = has(StateEnabled);
        widget.focused = has(StateFocused);
        widget.selected = has(StateSelected);
        widget.active = has(StateActive);
        widget.object = pending.path;
        widget.name = widget.text = replyValue(pending.name).toString();
        widget.parent = pending.parent;
        widget.window = pending.parent < 0 ? int(screen.size()) : screen.at(pending.parent).window;
        if (pending.parent < 0)
            widget.kind = WidgetKind::Window;
        screen << widget;
        objects << Object{pending.path, canHaveChildren(widget.kind) && pending.children
                                            ? qdbus_cast<QList<Reference>>(replyValue(*pending.children))
                                            : QList<Reference>()};
    }
}

void AccessibleTree::readRectsAndTexts(Screen &screen, const QList<Object> &objects) const
{
    constexpr uint screenCoordinates = 0;
    QList<QDBusPendingCall> rects;
    QHash<int, QDBusPendingCall> texts;
    for (int i = 0; i < screen.size(); ++i) {
        const QString &path = objects.at(i + 1).path;
        rects << callAsync(path, QStringLiteral("org.a11y.atspi.Component"), QStringLiteral("GetExtents"),
                           {screenCoordinates});
        // Only widgets that have text are asked for it: for any other widget, the program logs a warning.
        if (screen.at(i).kind == WidgetKind::TextField || screen.at(i).kind == WidgetKind::TextView)
            texts.insert(i, callAsync(path, QStringLiteral("org.a11y.atspi.Text"), QStringLiteral("GetText"),
                                      {0, -1}));
    }
    for (int i = 0; i < screen.size(); ++i)
        screen[i].rect = qdbus_cast<QRect>(replyValue(rects.at(i)));
    for (auto text = texts.cbegin(); text != texts.cend(); ++text)
        screen[text.key()].text = replyValue(text.value()).toString();
}

bool AccessibleTree::act(const Widget &widget) const
{
    constexpr int first = 0; // the action of a click comes first, before actions such as setting the focus
    return replyValue(callAsync(widget.object, QStringLiteral("org.a11y.atspi.Action"),
                                QStringLiteral("DoAction"), {first}))
        .toBool();
}

bool AccessibleTree::setText(const Widget &widget, const QString &text) const
{
    return replyValue(callAsync(widget.object, QStringLiteral("org.a11y.atspi.EditableText"),
                                QStringLiteral("SetTextContents"), {text}))
        .toBool();
}
