#pragma once

#include "refusal/refusal.h"

// Start-up can't go on; the description is the whole message for the person at the counter.
class StartupError : public Refusal {
public:
    using Refusal::Refusal;
};
