#pragma once

#include "tests/shorthand.h"

#include <QDir>
#include <QFile>

#include <malloc.h>
#include <unistd.h>

/// The system resources that this process uses.
struct Resources
{
    double memory;      ///< resident memory in megabytes of 1024 x 1024 bytes
    double heap;        ///< allocated heap in the same unit, without free blocks
    double threads;     ///< number of threads
    double descriptors; ///< number of open file descriptors

    static Resources now()
    {
        QFile pages("/proc/self/statm"_s);
        pages.open(QIODevice::ReadOnly);
        const double resident = pages.readAll().split(' ').value(1).toDouble();
        pages.close();
        return {
            resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / (1024 * 1024),
            static_cast<double>(mallinfo2().uordblks) / (1024 * 1024), entries("/proc/self/task"_s),
            entries("/proc/self/fd"_s)};
    }

private:
    static double entries(const QString &folder)
    {
        const auto all = QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot;
        return static_cast<double>(QDir(folder).entryList(all).size());
    }
};
