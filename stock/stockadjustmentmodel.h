#pragma once

#include "money/numberentry.h"
#include "records/product.h"
#include "startup/sessionstore.h"
#include "stock/inventoryservicing.h"
#include "store/modelcontext.h"
#include "viewmodel/viewmodel.h"

#include <QString>

#include <functional>
#include <optional>

// The state of the "Adjust Stock" sheet for one product: a stock-in (with its cost), a stock-out
// or an absolute count. The acting user is whoever is signed in when Apply is pressed.
class StockAdjustmentModel : public ViewModel {
    Q_OBJECT

public:
    enum class Mode { stockIn, stockOut, adjust };

    StockAdjustmentModel(InventoryServicing& inventory, ModelContext& context, SessionStore& session,
                         Ref<Product> product, std::function<void()> onDismiss, QObject* parent = nullptr);

    Ref<Product> product() const { return m_product; }
    Mode mode() const { return m_mode; }
    void setMode(Mode mode);
    QString quantityText() const { return m_quantityText; }
    void setQuantityText(const QString& text);
    QString reason() const { return m_reason; }
    void setReason(const QString& text);
    QString supplier() const { return m_supplier; }
    void setSupplier(const QString& text);
    // Starts at the product's cost, so an unchanged cost leaves the average where it is.
    QString unitCostText() const { return m_unitCostText; }
    void setUnitCostText(const QString& text);

    QString title() const;
    QString quantityTitle() const;
    QString unitCostTitle() const;
    static QString supplierTitle() { return QStringLiteral("Supplier (optional)"); }
    static QString reasonTitle() { return QStringLiteral("Reason / note"); }
    static QString applyTitle() { return QStringLiteral("Apply"); }
    static QString modeLabel(Mode mode);

    // The new average cost and how it comes about; only while a stock-in has a valid quantity
    // and cost.
    std::optional<QString> costPreview() const;

    // On success calls onDismiss and returns true; otherwise errorMessage says why and the store
    // and the product in memory are as they were, so Apply can be pressed again. Quantities read
    // through NumberEntry::quantity, the unit cost as money to 4 places.
    bool apply();

Q_SIGNALS:
    void modeChanged();
    void quantityTextChanged();
    void reasonChanged();
    void supplierChanged();
    void unitCostTextChanged();

private:
    struct ParsedQuantity {
        std::optional<double> value;
        QString error;
    };
    ParsedQuantity parsedQuantity() const;
    NumberEntry unitCostEntry() const;
    // The typed cost when it is a number of 0 or more.
    std::optional<double> parsedUnitCost() const;
    QString money(double amount) const;
    void assign(QString& field, const QString& value, void (StockAdjustmentModel::*changed)());

    InventoryServicing& m_inventory;
    ModelContext& m_context;
    SessionStore& m_session;
    Ref<Product> m_product;
    std::function<void()> m_onDismiss;
    Mode m_mode = Mode::stockIn;
    QString m_quantityText;
    QString m_reason;
    QString m_supplier;
    QString m_unitCostText;
};
