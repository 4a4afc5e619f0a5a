#include "ui/inventory/stockadjustmentsheet.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "stock/stockadjustmentmodel.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>
#include <iterator>

namespace {
using Mode = StockAdjustmentModel::Mode;
// The mode picker's segments, in the order they are shown.
constexpr Mode modes[] = {Mode::stockIn, Mode::stockOut, Mode::adjust};

QLineEdit* makeField(const char* name, QWidget* parent)
{
    auto* field = new QLineEdit(parent);
    field->setObjectName(QString::fromLatin1(name));
    return field;
}

QVBoxLayout* makeColumn(QWidget* parent)
{
    auto* column = new QVBoxLayout(parent);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(12);
    return column;
}
} // namespace

StockAdjustmentSheet::StockAdjustmentSheet(InventoryServicing& inventory, ModelContext& context,
                                           SessionStore& session, const Ref<Product>& product,
                                           QWidget* parent)
    : Sheet(StockAdjustmentModel::applyTitle(), parent)
    , m_model(new StockAdjustmentModel(
          inventory, context, session, product, [this] { accept(); }, this))
{
    setTitle(m_model->title());

    QStringList labels;
    for (Mode mode : modes)
        labels << StockAdjustmentModel::modeLabel(mode);
    m_mode = new SegmentedControl(labels, this);
    // Return anywhere in the sheet applies, even after choosing a mode with the mouse.
    for (int index = 0; index < int(std::size(modes)); ++index)
        static_cast<QPushButton*>(m_mode->segment(index))->setAutoDefault(false);

    const Ref<AppSettings> settings = session.settings();
    const QString symbol = settings ? settings->currencySymbol() : Currency::fixedSign;
    m_onHand = Theme::label(QStringLiteral("On hand: %1 · Cost %2")
                                .arg(Quantity::format(product->stockQuantity(), product->sellingUnit()),
                                     Currency::format(product->costPrice(), symbol)),
                            Theme::Text::note, this);
    m_onHand->setObjectName(QStringLiteral("onHand"));

    m_quantity = makeField("quantity", this);
    m_quantity->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_unitCost = makeField("unitCost", this);
    m_unitCost->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    m_supplier = makeField("supplier", this);
    m_reason = makeField("reason", this);
    m_costPreview = Theme::label(QString(), Theme::Text::note, this);
    m_costPreview->setObjectName(QStringLiteral("costPreview"));
    errorLabel()->setObjectName(QStringLiteral("errorMessage"));

    form()->addWidget(m_onHand);
    form()->addWidget(m_mode);
    m_quantityCaption = addLabelledField(form(), m_model->quantityTitle(), m_quantity);

    // Cost and supplier belong to a delivery only; hidden together for the other modes.
    m_deliveryFields = new QWidget(this);
    QVBoxLayout* delivery = makeColumn(m_deliveryFields);
    addLabelledField(delivery, m_model->unitCostTitle(), m_unitCost);
    delivery->addWidget(m_costPreview);
    addLabelledField(delivery, StockAdjustmentModel::supplierTitle(), m_supplier);
    form()->addWidget(m_deliveryFields);

    addLabelledField(form(), StockAdjustmentModel::reasonTitle(), m_reason);
    // A fixed width lets wrapped texts take the height they need; the height follows the mode.
    for (QWidget* wide : {static_cast<QWidget*>(heading()), static_cast<QWidget*>(m_mode)})
        wide->setFixedWidth(400);
    layout()->setSizeConstraint(QLayout::SetFixedSize);

    using Model = StockAdjustmentModel;
    bindText(m_quantity, *m_model, &Model::quantityText, &Model::setQuantityText,
             &Model::quantityTextChanged);
    bindText(m_unitCost, *m_model, &Model::unitCostText, &Model::setUnitCostText,
             &Model::unitCostTextChanged);
    bindText(m_supplier, *m_model, &Model::supplier, &Model::setSupplier, &Model::supplierChanged);
    bindText(m_reason, *m_model, &Model::reason, &Model::setReason, &Model::reasonChanged);

    connect(m_mode, &SegmentedControl::currentIndexChanged, m_model,
            [this](int index) { m_model->setMode(modes[index]); });
    connect(m_model, &Model::modeChanged, this, &StockAdjustmentSheet::showMode);
    for (auto changed : {&Model::modeChanged, &Model::quantityTextChanged, &Model::unitCostTextChanged})
        connect(m_model, changed, this, &StockAdjustmentSheet::showCostPreview);
    // A refusal speaks of what was typed then; once that changes it would only mislead.
    for (QLineEdit* field : {m_quantity, m_unitCost, m_supplier, m_reason})
        connect(field, &QLineEdit::textEdited, this, [this] { showError(std::nullopt); });
    connect(m_model, &Model::modeChanged, this, [this] { showError(std::nullopt); });

    showMode();
    showCostPreview();
    m_quantity->setFocus();
}

void StockAdjustmentSheet::primaryAction()
{
    m_model->apply();
    // Shown again even when it's the same refusal as before the last edit hid it.
    showError(m_model->errorMessage());
}

void StockAdjustmentSheet::showMode()
{
    const Mode mode = m_model->mode();
    const auto segment = std::find(std::begin(modes), std::end(modes), mode) - std::begin(modes);
    m_mode->setCurrentIndex(int(segment));
    m_quantityCaption->setText(m_model->quantityTitle());
    m_quantity->setAccessibleName(m_model->quantityTitle());
    m_deliveryFields->setVisible(mode == Mode::stockIn);
}

void StockAdjustmentSheet::showCostPreview()
{
    const std::optional<QString> preview = m_model->costPreview();
    m_costPreview->setText(preview.value_or(QString()));
    m_costPreview->setVisible(preview.has_value());
}
