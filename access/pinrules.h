#pragma once

#include <QString>

// What a PIN may look like. Any character the Unicode tables call a number counts as a digit, so a
// PIN typed in Arabic-Indic or Devanagari digits is as good as one in ASCII.
class PinRules {
public:
    // 4 to 6 characters as a person sees them, each made only of numeric code points.
    static bool isValid(const QString& pin);
    // The form a typed PIN is stored and compared in: spaces and tabs trimmed, line ends kept.
    static QString trimmed(const QString& text);
};

// Characters as a person sees them (grapheme clusters), not UTF-16 units: "𝟏" is one, not two.
int characterCount(const QString& text);
