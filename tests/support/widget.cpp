#include "tests/support/widget.h"

#include <QStringList>

namespace
{

QString subtree(const Screen &screen, int parent, int depth)
{
    QString lines;
    for (int i = 0; i < screen.size(); ++i) {
        if (screen.at(i).parent != parent)
            continue;
        // Widgets that only group others give the reader no information: their contents take their place.
        const bool worthALine = screen.at(i).kind != WidgetKind::Other || !screen.at(i).name.isEmpty();
        if (worthALine)
            lines += QString(qsizetype{2} * depth, u' ') + screen.at(i).description() + u'\n';
        lines += subtree(screen, i, worthALine ? depth + 1 : depth);
    }
    return lines;
}

} // namespace

QString nameOf(WidgetKind kind)
{
    switch (kind) {
    case WidgetKind::Window:
        return QStringLiteral("window");
    case WidgetKind::Label:
        return QStringLiteral("label");
    case WidgetKind::Button:
        return QStringLiteral("button");
    case WidgetKind::CheckBox:
        return QStringLiteral("check box");
    case WidgetKind::TextField:
        return QStringLiteral("text field");
    case WidgetKind::TextView:
        return QStringLiteral("text view");
    case WidgetKind::List:
        return QStringLiteral("list");
    case WidgetKind::Row:
        return QStringLiteral("row");
    case WidgetKind::ProgressBar:
        return QStringLiteral("progress bar");
    case WidgetKind::Other:
        break;
    }
    return QStringLiteral("thing");
}

QString Widget::description() const
{
    QString line = nameOf(kind);
    if (!name.isEmpty())
        line += QStringLiteral(" \"%1\"").arg(name);
    if (kind == WidgetKind::TextField || kind == WidgetKind::TextView)
        line += QStringLiteral(" holding \"%1\"").arg(text);
    QStringList remarks;
    if (!enabled)
        remarks << QStringLiteral("disabled");
    if (!showing)
        remarks << QStringLiteral("out of sight");
    if (checked)
        remarks << QStringLiteral("checked");
    if (focused)
        remarks << QStringLiteral("focused");
    if (selected)
        remarks << QStringLiteral("selected");
    if (active)
        remarks << QStringLiteral("active");
    return remarks.isEmpty() ? line : line + QStringLiteral(" (%1)").arg(remarks.join(QStringLiteral(", ")));
}

QString describe(const Screen &screen)
{
    const QString lines = subtree(screen, -1, 0);
    return lines.isEmpty() ? QStringLiteral("(nothing)\n") : lines;
}
