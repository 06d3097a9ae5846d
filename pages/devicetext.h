#pragma once

#include <initializer_list>

#include <QLabel>

/// Has the labels take the texts of the device, the names of networks and the paths of files for text. Anybody
/// can name a network "<img src=/dev/zero>": taken for markup, the file would be read. Such a label must have
/// no buddy either, because with one an '&' is a mnemonic in plain text too.
inline void takeForText(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels)
        label->setTextFormat(Qt::PlainText);
}
