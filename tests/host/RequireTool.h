#pragma once

#include <QStandardPaths>
#include <QtTest>

// Checks that read our files back need programs from outside; without them they cannot run.
#define VX_REQUIRE_TOOL(name)                                                                      \
    do {                                                                                           \
        if (QStandardPaths::findExecutable(QStringLiteral(name)).isEmpty())                        \
            QSKIP(name " is not installed; scripts/install-deps.sh installs it");                  \
    } while (false)
