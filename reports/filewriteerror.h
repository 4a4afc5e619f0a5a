#pragma once

#include "refusal/refusal.h"

// Why a file the user asked for was not written, in one sentence they can act on.
class FileWriteError : public Refusal {
public:
    static FileWriteError diskFull(const QString& fileName)
    {
        return FileWriteError(
            QStringLiteral("The disk is full, so %1 wasn't saved. Free some space and try again.")
                .arg(fileName));
    }
    // `reason` is the system's own words, such as "Permission denied".
    static FileWriteError notSaved(const QString& fileName, const QString& reason)
    {
        return FileWriteError(QStringLiteral("%1 couldn't be saved: %2.").arg(fileName, reason));
    }

private:
    explicit FileWriteError(const QString& description)
        : Refusal(description)
    {
    }
};
