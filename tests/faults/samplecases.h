#pragma once

#include <QList>

/// Returns which of \a cases, numbered from 0, this run tries. Normally these are \a some cases that a seed
/// selects; the seed is printed, and ZV_FAULTS_SEED repeats it. With ZV_FAULTS_SHARD, such as "2/8", it
/// returns all of the second of eight equal shares.
QList<qsizetype> sampleCases(qsizetype cases, qsizetype some);
