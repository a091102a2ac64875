#pragma once

#include "tests/app/userprogram.h"

/// The demo program.
class Demo : public UserProgram
{
public:
    explicit Demo(const PrivateHome &home) : UserProgram(home, {QStringLiteral(TAMBER_DEMO)}) {}
};
