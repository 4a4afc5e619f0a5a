#include "ui/customers/adjustpointssheet.h"

#include "environment/appenvironment.h"
#include "ui/access/approvalsheet.h"
#include "ui/controls/formfields.h"
#include "ui/controls/segmentedcontrol.h"
#include "ui/style/theme.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace {
// The direction picker's segments, in the order they are shown.
constexpr int addSegment = 0;
constexpr int removeSegment = 1;
} // namespace

AdjustPointsSheet::AdjustPointsSheet(AppEnvironment& environment, SessionStore& session,
                                     const Ref<Customer>& customer, QWidget* parent)
    : Sheet(AdjustPointsModel::saveTitle(), parent)
    , m_environment(environment)
    , m_approvals(environment.approvalService(), environment.accountsService(), session)
    , m_model(environment.loyaltyService(), session, customer, [this] { accept(); })
{
    using Model = AdjustPointsModel;
    using Direction = AdjustPointsModel::Direction;
    setTitle(Model::title());
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

    auto* balance = Theme::label(m_model.balanceLine(), Theme::Text::subtitle, this);
    balance->setTextFormat(Qt::PlainText);
    form()->addWidget(balance);
    form()->addWidget(m_direction);
    addLabelledField(form(), Model::pointsTitle(), m_points);
    addLabelledField(form(), Model::reasonTitle(), m_reason);
    form()->addWidget(m_newBalance);

    bindText(m_points, m_model, &Model::pointsText, &Model::setPointsText, &Model::fieldsChanged);
    bindText(m_reason, m_model, &Model::reason, &Model::setReason, &Model::fieldsChanged);
    connect(m_direction, &SegmentedControl::currentIndexChanged, this, [this](int index) {
        m_model.setDirection(index == removeSegment ? Direction::remove : Direction::add);
    });
    connect(&m_model, &Model::fieldsChanged, this, &AdjustPointsSheet::showNewBalance);
    connect(&m_model, &Model::errorMessageChanged, this, [this] { showError(m_model.errorMessage()); });
    showNewBalance();
    m_points->setFocus();
}

void AdjustPointsSheet::primaryAction()
{
    std::optional<ApprovalRequest> request = m_approvals.adjustPoints(m_model);
    if (request)
        ApprovalSheet::raiseInPlaceOf(std::move(*request), m_environment, *this);
}

void AdjustPointsSheet::showNewBalance()
{
    const std::optional<QString> text = m_model.newBalanceText();
    m_newBalance->setText(text.value_or(QString()));
    // Kept in the layout while empty, so the sheet doesn't jump as digits come and go.
    m_newBalance->setMinimumHeight(m_newBalance->fontMetrics().height());
}
