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
        // Widgets that only group others are not listed: their contents take their place.
        const bool isListed = screen.at(i).kind != WidgetKind::Other || !screen.at(i).name.isEmpty();
        if (isListed)
            lines += QString(qsizetype{2} * depth, u' ') + screen.at(i).description() + u'\n';
        lines += subtree(screen, i, isListed ? depth + 1 : depth);
    }
    return lines;
}

} // namespace

QString nameOf(WidgetKind kind)
{
    static const char *const names[] = {"window", "label", "button",       "text field", "text view",
                                        "list",   "row",   "progress bar", "widget"};
    return QString::fromLatin1(names[int(kind)]);
}

QString Widget::description() const
{
    QString line = nameOf(kind);
    if (!name.isEmpty())
        line += QStringLiteral(" \"%1\"").arg(name);
    if (kind == WidgetKind::TextField || kind == WidgetKind::TextView)
        line += QStringLiteral(" (text \"%1\")").arg(text);
    if (!enabled)
        line += QStringLiteral(" (disabled)");
    if (focused)
        line += QStringLiteral(" (focused)");
    if (selected)
        line += QStringLiteral(" (selected)");
    if (active)
        line += QStringLiteral(" (active)");
    return line;
}

QString describe(const Screen &screen)
{
    const QString lines = subtree(screen, -1, 0);
    return lines.isEmpty() ? QStringLiteral("(nothing)\n") : lines;
}
