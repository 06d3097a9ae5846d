#pragma once

#include <QList>

/// Which of \a cases, numbered from 0, this run is to try: \a some that a seed picks, which is printed and
/// which ZV_FAULTS_SEED repeats; or with ZV_FAULTS_SHARE, such as "2/8", all of the second of eight equal
/// shares.
QList<qsizetype> faultChoice(qsizetype cases, qsizetype some);
