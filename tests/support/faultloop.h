#pragma once

#include "store/modelcontext.h"

#include <QString>

#include <functional>
#include <optional>

// What the file holds, table by table and row by row, read through a connection of its own.
QString dumpStoreFile(const QString& path);

// Every live record of the context holds the values of its row in the file, and the context has
// nothing pending. Fails the current test where they differ.
void expectMemoryMatchesFile(ModelContext& context, const QString& path);

// One try of a write as a person would make it: the message they were shown, or nothing when it
// went through.
using FaultTry = std::function<std::optional<QString>()>;

// Runs `attempt` with the Nth call into SQLite failing with `extendedCode`, for N = 1, 2, 3, ...
// until it goes through. After each failure the message must be the plain sentence for the code,
// the file must be as before, and memory must match the file; `afterFailure` may check more.
// Returns how many failures were injected.
int failEachCallUntilItSucceeds(ModelContext& context, const QString& path, int extendedCode,
                                const FaultTry& attempt, const std::function<void()>& afterFailure = {});

// The codes the loops run with: a full disk, a write error, another program holding the lock.
const std::vector<int>& injectedFaultCodes();
