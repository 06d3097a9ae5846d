#include "tests/faults/samplecases.h"

#include <QRandomGenerator>
#include <QStringList>

QList<qsizetype> sampleCases(qsizetype cases, qsizetype some)
{
    QList<qsizetype> chosen;
    const QStringList share = qEnvironmentVariable("ZV_FAULTS_SHARD").split('/');
    if (share.size() == 2) {
        for (qsizetype number = share.at(0).toInt() - 1; number < cases; number += share.at(1).toInt())
            chosen += number;
        return chosen;
    }
    // The default seed is fixed, so that a change is compared with the cases that passed before it;
    // scripts/soak tries all cases.
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
