#pragma once

#include "records/product.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <optional>

// The amount sheet for measured goods, to add a product or change a line's amount. Kilograms,
// litres, metres and hours take fractions; grams, millilitres and pieces are counted whole, as a
// scale or a meter never shows a part of them.
class QuantityEntry : public ViewModel {
    Q_OBJECT

public:
    // `unitPrice` is what one unit costs on this line, a changed price included. With an initial
    // quantity the sheet edits a line and starts from it; without, it adds the product.
    QuantityEntry(Ref<Product> product, double unitPrice, std::optional<double> initialQuantity,
                  QString currencySymbol, QObject* parent = nullptr);

    static bool takesFractions(SellingUnit unit);
    // The amount the text stands for: above 0, finite, to thousandths and whole where the unit
    // isn't measured in parts; 0 for anything else. "," is read as the decimal point.
    static double parse(const QString& text, SellingUnit unit);

    const Ref<Product>& product() const { return m_product; }
    SellingUnit unit() const { return m_product->sellingUnit(); }
    QString text() const { return m_text; }
    void setText(const QString& text) { assign(m_text, text); }

    double value() const { return parse(m_text, unit()); }
    QString fieldTitle() const;
    // Stands behind the field: "kg", "L", "hr"; empty for each.
    QString unitLabel() const { return SellingUnits::symbol(unit()); }
    // Under the field while what is typed can't be taken.
    std::optional<QString> hint() const;
    QString lineTotalText() const;
    bool isEditingLine() const { return m_editing; }
    QString confirmText() const;
    bool canConfirm() const { return value() > 0; }

private:
    Ref<Product> m_product;
    double m_unitPrice;
    bool m_editing;
    QString m_currencySymbol;
    QString m_text;
};
