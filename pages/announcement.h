#pragma once

#include <QString>

class QLabel;

/// Has a screen reader say what \a label shows. Does nothing while the label is not on the screen.
void announce(QLabel *label);

/// Announces what a label shows at the end of a scope, if the label showed something else at its beginning.
/// Pages that were entered several times run their slots as often in a row, and still announce once. At the
/// end of the scope, because a screen reader stops speaking when the focus moves.
class Announcement
{
public:
    /// With null as \a label nothing is announced.
    explicit Announcement(QLabel *label);
    ~Announcement();
    Q_DISABLE_COPY_MOVE(Announcement)

private:
    QLabel *_label;
    QString _before;
};
