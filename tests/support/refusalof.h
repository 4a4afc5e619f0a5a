#pragma once

#include "refusal/refusal.h"

#include <QString>

// What a person would be shown when `action` is refused; empty when it goes through.
template <class Action> QString refusalOf(Action action)
{
    try {
        action();
    } catch (const Refusal& refusal) {
        return refusal.description();
    }
    return {};
}
