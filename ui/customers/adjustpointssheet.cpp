#include "ui/customers/adjustpointssheet.h"

#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// The direction picker's segments, in the order they are shown.
constexpr int addSegment = 0;
constexpr int removeSegment = 1;
} // namespace

AdjustPointsSheet::AdjustPointsSheet(LoyaltyService& loyalty, SessionStore& session,
                                     const Ref<Customer>& customer, QWidget* parent)
    : QDialog(parent)
    , m_model(loyalty, session, customer, [this] { accept(); })
{
    using Model = AdjustPointsModel;
    using Direction = AdjustPointsModel::Direction;
    setWindowTitle(Model::title());
    setWindowModality(Qt::WindowModal);
    setFixedWidth(440);

    m_direction = new SegmentedControl(
        {Model::directionLabel(Direction::add), Model::directionLabel(Direction::remove)}, this);
    // Return saves wherever the focus is, as in the sheet's fields.
    for (int index : {addSegment, removeSegment})
        qobject_cast<QPushButton*>(m_direction->segment(index))->setAutoDefault(false);
    m_points = new QLineEdit(this);
    m_points->setPlaceholderText(Model::pointsHint());
    m_points->setInputMethodHints(Qt::ImhDigitsOnly);
    m_reason = new QLineEdit(this);
    m_newBalance = Theme::label(QString(), Theme::Text::note, this);
    m_error = new ErrorLabel(this);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(Model::cancelTitle(), QDialogButtonBox::RejectRole);
    // Marked before the box takes it in, which polishes it with the style of a plain button.
    m_save = new QPushButton(Model::saveTitle(), this);
    Theme::markPrimary(m_save);
    buttons->addButton(m_save, QDialogButtonBox::AcceptRole);
    m_save->setDefault(true);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(24, 20, 24, 20);
    layout->setSpacing(12);
    layout->addWidget(Theme::label(Model::title(), Theme::Text::heading, this));
    auto* balance = Theme::label(m_model.balanceLine(), Theme::Text::subtitle, this);
    balance->setTextFormat(Qt::PlainText);
    layout->addWidget(balance);
    layout->addWidget(m_direction);
    addLabelledField(layout, Model::pointsTitle(), m_points);
    addLabelledField(layout, Model::reasonTitle(), m_reason);
    layout->addWidget(m_newBalance);
    layout->addWidget(m_error);
    layout->addSpacing(4);
    layout->addWidget(buttons);

    bindText(m_points, m_model, &Model::pointsText, &Model::setPointsText, &Model::fieldsChanged);
    bindText(m_reason, m_model, &Model::reason, &Model::setReason, &Model::fieldsChanged);
    connect(m_direction, &SegmentedControl::currentIndexChanged, this, [this](int index) {
        m_model.setDirection(index == removeSegment ? Direction::remove : Direction::add);
    });
    connect(&m_model, &Model::fieldsChanged, this, &AdjustPointsSheet::showNewBalance);
    connect(&m_model, &Model::errorMessageChanged, this, [this] {
        m_error->setMessage(m_model.errorMessage());
        adjustSize();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    // Not through accepted(): the sheet closes only once the adjustment is saved.
    connect(m_save, &QPushButton::clicked, &m_model, &Model::save);
    showNewBalance();
    m_points->setFocus();
}

void AdjustPointsSheet::showNewBalance()
{
    const std::optional<QString> text = m_model.newBalanceText();
    m_newBalance->setText(text.value_or(QString()));
    // Kept in the layout while empty, so the sheet doesn't jump as digits come and go.
    m_newBalance->setMinimumHeight(m_newBalance->fontMetrics().height());
}
