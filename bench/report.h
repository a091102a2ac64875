#pragma once

#include <QString>

/// The lines that the benchmarks print.
namespace report {

/// Prints a figure, its limit and the ratio of the two. A ratio above 1 misses the limit.
void against(const QString &what, double measured, double limit, const QString &unit);

/// Prints a number of faults and the most that are allowed. More of them miss the limit.
void atMost(const QString &what, int counted, int limit);

/// Prints a figure without a limit. Such figures help to interpret the others.
void figure(const QString &what, double measured, const QString &unit);

/// Returns how many figures have missed their limit.
int missed();

/// Returns how often or how long a benchmark works: the environment variable's number if it is
/// above 1, otherwise `usual`.
int amount(const char *variable, int usual);

} // namespace report
