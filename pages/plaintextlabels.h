#pragma once

#include <initializer_list>

#include <QLabel>
#include <QLocale>

/// Makes the labels show device texts, network names and file paths as plain text. Anyone can name a network
/// "<img src=/dev/zero>": as markup, the label would read that file. Such a label must not have a buddy
/// either, because a buddy makes '&' a mnemonic in plain text too.
inline void setPlainText(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels)
        label->setTextFormat(Qt::PlainText);
}

/// In right-to-left languages, aligns the labels to the leading edge of their layout. By default, Qt aligns a
/// label by the direction of its text: Latin and Arabic values of one column would be at opposite ends of it.
/// Layouts are right-to-left only if Qt has its own strings in the language.
inline void alignToLeadingEdge(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels) {
        const Qt::Alignment leading = label->isRightToLeft() ? Qt::AlignRight : Qt::AlignLeft;
        if (label->isRightToLeft() || QLocale().textDirection() == Qt::RightToLeft)
            label->setAlignment(leading | Qt::AlignAbsolute | Qt::AlignVCenter);
    }
}
