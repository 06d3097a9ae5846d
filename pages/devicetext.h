#pragma once

#include <initializer_list>

#include <QLabel>

/// Has the labels take the texts of the device and the names of networks for text. Anybody can name a network
/// "<img src=/dev/zero>": taken for markup, the file would be read.
inline void takeForText(std::initializer_list<QLabel *> labels)
{
    for (QLabel *label : labels)
        label->setTextFormat(Qt::PlainText);
}
