#pragma once

#include <QString>

#include <vector>

// One tax of a product's rate, kept on each sold line so that receipts can itemise it later.
struct TaxComponent {
    QString label;
    // Fraction of the pre-tax base that this tax charges; a product's shares add up to its rate.
    double share = 0;

    // "label|share" lines joined by "\n". Persisted in SaleItem.taxComponentsRaw and in backups.
    // Labels are taken to hold no "|" or line feed.
    static QString encode(const std::vector<TaxComponent>& components);
    // Lines that cannot be read are skipped; the order is kept.
    static std::vector<TaxComponent> decode(const QString& text);
};
