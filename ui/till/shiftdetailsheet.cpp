#include "ui/till/shiftdetailsheet.h"

#include "money/currency.h"
#include "ui/controls/cards.h"
#include "ui/controls/tables.h"
#include "ui/style/theme.h"
#include "ui/till/shifthistorymodel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
constexpr int visibleMovementRows = 8;

QHBoxLayout* figureRow()
{
    auto* row = new QHBoxLayout;
    row->setSpacing(36);
    return row;
}
} // namespace

ShiftDetailSheet::ShiftDetailSheet(const ShiftDetail& detail, const QString& currencySymbol, QWidget* parent)
    : Sheet(QStringLiteral("Done"), parent)
    , m_shiftID(detail.shiftID)
{
    setTitle(detail.title);
    // Nothing here to cancel: Done and Escape both just close it.
    cancelButton()->hide();
    setMinimumWidth(640);
    const auto money = [&](double amount) { return Currency::format(amount, currencySymbol); };
    const auto moneyOrDash = [&](std::optional<double> amount) {
        return amount ? money(*amount) : QStringLiteral("—");
    };

    auto* who = new Card(this);
    m_opened = new QLabel(detail.openedText, who);
    m_closed = new QLabel(detail.closedText, who);
    for (QLabel* line : {m_opened, m_closed}) {
        line->setTextFormat(Qt::PlainText);
        who->content()->addWidget(line);
    }
    QHBoxLayout* cash = figureRow();
    addFigure(cash, QStringLiteral("Opening Float"), who)->setText(money(detail.openingFloat));
    addFigure(cash, QStringLiteral("Expected Cash"), who)->setText(moneyOrDash(detail.expectedCash));
    addFigure(cash, QStringLiteral("Counted Cash"), who)->setText(moneyOrDash(detail.countedCash));
    m_variance = addFigure(cash, QStringLiteral("Difference"), who);
    m_variance->setText(detail.varianceText.isEmpty() ? QStringLiteral("—") : detail.varianceText);
    m_variance->setStyleSheet(
        QStringLiteral("color: %1;").arg(ShiftHistoryModel::toneColour(detail.tone).name()));
    cash->addStretch();
    who->content()->addSpacing(4);
    who->content()->addLayout(cash);
    if (!detail.notes.trimmed().isEmpty()) {
        auto* notes = Theme::label(QStringLiteral("Notes: ") + detail.notes, Theme::Text::note, who);
        notes->setTextFormat(Qt::PlainText);
        notes->setWordWrap(true);
        who->content()->addWidget(notes);
    }
    form()->addWidget(who);

    auto* takings = new Card(this);
    QHBoxLayout* counts = figureRow();
    m_sales = addFigure(counts, QStringLiteral("Sales"), takings);
    m_sales->setText(QString::number(detail.sales));
    addFigure(counts, QStringLiteral("Refunds"), takings)->setText(QString::number(detail.refunds));
    addFigure(counts, QStringLiteral("Voided"), takings)->setText(QString::number(detail.voided));
    addFigure(counts, QStringLiteral("Paid In"), takings)->setText(money(detail.paidIn));
    addFigure(counts, QStringLiteral("Paid Out"), takings)->setText(money(detail.paidOut));
    counts->addStretch();
    takings->content()->addLayout(counts);
    form()->addWidget(takings);

    auto* movements = new Card(this);
    movements->content()->addWidget(
        Theme::label(ShiftDetailModel::movementsTitle(), Theme::Text::strong, movements));
    m_movements = makeHistoryTable(5, ShiftDetailModel::movementsTitle(), movements);
    m_movements->horizontalHeader()->hide();
    m_movements->horizontalHeader()->setSectionResizeMode(2, QHeaderView::Stretch);
    m_movements->setRowCount(int(detail.movements.size()));
    static const QLocale locale(QLocale::English, QLocale::UnitedStates);
    for (int row = 0; row < detail.movements.size(); ++row) {
        const ShiftMovementLine& line = detail.movements[row];
        setRowCells(m_movements, row,
                    {locale.toString(line.timestamp.toLocalTime().time(), QLocale::ShortFormat),
                     CashMovementTypes::label(line.type), line.reason, line.performedBy,
                     money(line.signedAmount())},
                    4);
    }
    auto* none = Theme::label(ShiftDetailModel::noMovementsMessage(), Theme::Text::note, movements);
    movements->content()->addWidget(m_movements);
    movements->content()->addWidget(none);
    showRows(m_movements, visibleMovementRows, none);
    form()->addWidget(movements);
}

void ShiftDetailSheet::primaryAction()
{
    accept();
}
