#pragma once

#include "records/product.h"
#include "ui/controls/sheet.h"

class InventoryServicing;
class ModelContext;
class QLabel;
class QLineEdit;
class SegmentedControl;
class SessionStore;
class StockAdjustmentModel;

// "Adjust Stock": books a stock-in with its cost, a stock-out or a count for one product. Closes
// only once the change is saved; a refusal stays open with the reason.
class StockAdjustmentSheet : public Sheet {
    Q_OBJECT

public:
    StockAdjustmentSheet(InventoryServicing& inventory, ModelContext& context, SessionStore& session,
                         const Ref<Product>& product, QWidget* parent = nullptr);

    StockAdjustmentModel& model() const { return *m_model; }
    SegmentedControl* modePicker() const { return m_mode; }
    QLineEdit* quantityField() const { return m_quantity; }
    QLineEdit* unitCostField() const { return m_unitCost; }
    QLineEdit* supplierField() const { return m_supplier; }
    QLineEdit* reasonField() const { return m_reason; }
    QLabel* quantityCaption() const { return m_quantityCaption; }
    QLabel* costPreviewLabel() const { return m_costPreview; }
    QPushButton* applyButton() const { return primaryButton(); }

private:
    void primaryAction() override;
    void showMode();
    void showCostPreview();

    StockAdjustmentModel* m_model;
    SegmentedControl* m_mode;
    QLabel* m_onHand;
    QLabel* m_quantityCaption;
    QLineEdit* m_quantity;
    QWidget* m_deliveryFields;
    QLineEdit* m_unitCost;
    QLineEdit* m_supplier;
    QLineEdit* m_reason;
    QLabel* m_costPreview;
};
