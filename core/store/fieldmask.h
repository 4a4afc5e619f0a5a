#pragma once

#include <QtGlobal>

#include <array>

// One bit per field of a record: which fields changed since they were last written.
class FieldMask {
public:
    static constexpr int capacity = 128;

    void set(int field) { m_words[size_t(field) / 64] |= quint64(1) << (field % 64); }
    bool test(int field) const { return m_words[size_t(field) / 64] & (quint64(1) << (field % 64)); }
    bool isEmpty() const { return (m_words[0] | m_words[1]) == 0; }
    void clear() { m_words = {}; }

private:
    std::array<quint64, capacity / 64> m_words{};
};
