#include "tests/faults/faultchoice.h"

#include <QRandomGenerator>
#include <QStringList>

QList<qsizetype> faultChoice(qsizetype cases, qsizetype some)
{
    QList<qsizetype> chosen;
    const QStringList share = qEnvironmentVariable("ZV_FAULTS_SHARE").split('/');
    if (share.size() == 2) {
        for (qsizetype number = share.at(0).toInt() - 1; number < cases; number += share.at(1).toInt())
            chosen += number;
        return chosen;
    }
    // The same ones each time, so that a change is held against what passed before it; scripts/soak tries
    // all.
    bool isGiven = false;
    quint32 seed = qEnvironmentVariable("ZV_FAULTS_SEED").toUInt(&isGiven);
    if (!isGiven)
        seed = 1;
    qInfo("ZV_FAULTS_SEED=%u", seed);
    QRandomGenerator random(seed);
    for (qsizetype i = 0; i < some; ++i)
        chosen += random.bounded(static_cast<int>(cases));
    return chosen;
}
