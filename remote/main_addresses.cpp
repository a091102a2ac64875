// tamber-addresses: prints the table of docs/osc.md.

#include "remote/addresses.h"

#include <QTextStream>

int main()
{
    QTextStream(stdout) << remote::addressTable();
    return 0;
}
