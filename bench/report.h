#pragma once

#include <QString>

/// The lines that the benchmarks print: what was measured, and its ratio to the limit.
namespace report {

/// Prints "what: measured unit, limit limit unit, ratio r". A ratio of at most 1 keeps the limit.
void against(const QString &what, double measured, double limit, const QString &unit);

/// Prints a figure that has no limit, for reading the others.
void figure(const QString &what, double measured, const QString &unit);

/// How many ratios were above 1.
int missed();

} // namespace report
