#pragma once

#include "refusal/refusal.h"

#include <QDateTime>

// Slows down guessing of passwords and PINs: after five wrong entries in a row each further try
// waits, 30 seconds at first, doubling up to five minutes. A right entry starts the count again.
// One throttle serves sign-in and approvals alike, so guesses can't be spread over both.
class AttemptThrottle {
public:
    static constexpr int freeTries = 5;

    // Throws a Refusal saying how long to wait while a try isn't allowed yet.
    void checkAllowed() const;
    void recordFailure();
    void recordSuccess();

private:
    int m_wrongInARow = 0;
    QDateTime m_blockedUntil;
};
