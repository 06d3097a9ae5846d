#pragma once

#include <QString>

class QLabel;

/// Makes a screen reader speak the text of \a label. Does nothing while the label is not on the screen.
void announce(QLabel *label);

/// Announces the text of a label at the end of a scope, if it changed since the beginning. Pages that were
/// entered several times run their slots several times in succession, but announce only once. It announces at
/// the end of the scope because a screen reader stops speaking when the focus moves.
class Announcement
{
public:
    /// If \a label is null, nothing is announced.
    explicit Announcement(QLabel *label);
    ~Announcement();
    Q_DISABLE_COPY_MOVE(Announcement)

private:
    QLabel *_label;
    QString _before;
};
