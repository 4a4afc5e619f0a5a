#pragma once

#include "records/enums.h"
#include "records/recordsfwd.h"
#include "store/recordmacros.h"

// clang-format off
#define TALLY_USER_FIELDS(X, C) \
    X(C, Text, name, setName, "") \
    X(C, Text, username, setUsername, "") \
    X(C, Text, passwordHash, setPasswordHash, "") \
    X(C, Text, passwordSalt, setPasswordSalt, "") \
    X(C, OptText, pin, setPin, ) \
    X(C, Text, roleRaw, setRoleRaw, "cashier") \
    X(C, Flag, isActive, setIsActive, true) \
    X(C, Date, createdAt, setCreatedAt, ) \
    X(C, ToMany, sales, _, Sale, cashier, Nullify) \
    X(C, ToMany, tillShifts, _, TillShift, cashier, Nullify)
// clang-format on

class User final : public Record {
    TALLY_RECORD(User, TALLY_USER_FIELDS)

public:
    std::optional<UserRole> role() const { return UserRoles::fromRaw(roleRaw()); }
    void setRole(UserRole role) { setRoleRaw(UserRoles::raw(role)); }
};
