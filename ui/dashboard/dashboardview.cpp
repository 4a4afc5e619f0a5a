#include "ui/dashboard/dashboardview.h"

#include "environment/appenvironment.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/tables.h"
#include "ui/style/theme.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

namespace {
constexpr int figureColumns = 4;
constexpr int visiblePaymentRows = 6;
constexpr int visibleLowStockRows = 8;

// A figure on a card of its own: its title, the figure, and a caption under it when given. The
// figure's label is returned; `caption`, when asked for, gets the caption's.
QLabel* addStatCard(QGridLayout* grid, int index, const QString& title, const QString& caption, QWidget* parent,
                    QLabel** captionLabel = nullptr)
{
    auto* card = new Card(parent);
    card->content()->setSpacing(4);
    card->content()->addWidget(Theme::label(title, Theme::Text::note, card));
    auto* figure = Theme::label(QString(), Theme::Text::title, card);
    figure->setAccessibleName(title);
    card->content()->addWidget(figure);
    auto* under = Theme::label(caption, Theme::Text::note, card);
    under->setVisible(!caption.isEmpty());
    card->content()->addWidget(under);
    card->content()->addStretch();
    if (captionLabel)
        *captionLabel = under;
    grid->addWidget(card, index / figureColumns, index % figureColumns);
    return figure;
}

// A card with a heading over a two-column table of label and amount, and a line in its place when
// the table is empty.
QTableWidget* addListCard(QHBoxLayout* row, const QString& heading, const QString& none, QWidget* parent,
                          QLabel** noneLabel)
{
    auto* card = new Card(parent);
    card->content()->addWidget(Theme::label(heading, Theme::Text::heading, card));
    QTableWidget* table = makeHistoryTable(2, heading, card);
    table->horizontalHeader()->hide();
    table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    card->content()->addWidget(table);
    *noneLabel = Theme::label(none, Theme::Text::note, card);
    card->content()->addWidget(*noneLabel);
    card->content()->addStretch();
    row->addWidget(card, 1);
    return table;
}

void fillTable(QTableWidget* table, const QList<DashboardLine>& lines, int maxRows, QLabel* none)
{
    table->setRowCount(int(lines.size()));
    for (int row = 0; row < lines.size(); ++row)
        setRowCells(table, row, {lines[row].label, lines[row].value}, 1);
    showRows(table, maxRows, none);
}
} // namespace

DashboardView::DashboardView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QScrollArea(parent)
    , m_model(environment.modelContext(), environment.accountsService(), environment.tillService(), session)
{
    using Model = DashboardViewModel;
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    auto* page = new QWidget(this);
    auto* column = new QVBoxLayout(page);
    column->setContentsMargins(32, 28, 32, 32);
    column->setSpacing(16);

    m_title = Theme::label(QString(), Theme::Text::title, page);
    m_error = new ErrorLabel(page);
    m_error->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    auto* titleRow = new QHBoxLayout;
    titleRow->setSpacing(24);
    titleRow->addWidget(m_title);
    titleRow->addWidget(m_error, 1);
    column->addLayout(titleRow);

    auto* grid = new QGridLayout;
    grid->setSpacing(12);
    m_netSales = addStatCard(grid, 0, Model::netSalesTitle(), QString(), page);
    m_transactions = addStatCard(grid, 1, Model::transactionsTitle(), QString(), page);
    m_averageBasket = addStatCard(grid, 2, Model::averageBasketTitle(), QString(), page);
    m_taxCollected = addStatCard(grid, 3, Model::taxCollectedTitle(), QString(), page);
    m_grossProfit = addStatCard(grid, 4, Model::grossProfitTitle(), QString(), page);
    m_owedToYou = addStatCard(grid, 5, Model::owedToYouTitle(), Model::owedToYouCaption(), page);
    m_lowStockCount = addStatCard(grid, 6, Model::lowStockItemsTitle(), Model::lowStockItemsCaption(), page);
    m_tillStatus = addStatCard(grid, 7, Model::tillStatusTitle(), QString(), page, &m_tillNote);
    // The status is a sentence, not a number: it wraps in its card rather than widening it.
    Theme::setKind(m_tillStatus, "heading");
    m_tillStatus->setWordWrap(true);
    for (int index = 0; index < figureColumns; ++index)
        grid->setColumnStretch(index, 1);
    column->addLayout(grid);

    auto* lists = new QHBoxLayout;
    lists->setSpacing(12);
    m_payments = addListCard(lists, Model::paymentTotalsTitle(), Model::noPaymentsMessage(), page, &m_noPayments);
    m_lowStock = addListCard(lists, Model::lowStockAlertsTitle(), Model::noLowStockMessage(), page, &m_noLowStock);
    column->addLayout(lists);
    column->addStretch();
    setWidget(page);

    connect(&m_model, &Model::errorMessageChanged, this, [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &Model::figuresChanged, this, [this] {
        m_title->setText(m_model.titleText());
        m_netSales->setText(m_model.netSalesText());
        m_transactions->setText(m_model.transactionsText());
        m_averageBasket->setText(m_model.averageBasketText());
        m_taxCollected->setText(m_model.taxCollectedText());
        m_grossProfit->setText(m_model.grossProfitText());
        m_owedToYou->setText(m_model.owedToYouText());
        m_lowStockCount->setText(m_model.lowStockCountText());
        m_tillStatus->setText(m_model.tillStatusText());
        m_tillNote->setText(m_model.tillStatusNote());
        m_tillNote->setVisible(!m_model.tillStatusNote().isEmpty());
        fillTable(m_payments, m_model.paymentLines(), visiblePaymentRows, m_noPayments);
        fillTable(m_lowStock, m_model.lowStockLines(), visibleLowStockRows, m_noLowStock);
    });
    // A hidden dashboard reads nothing; it reads afresh when shown (see showEvent).
    const auto refreshOnShow = [this] {
        if (isVisible())
            refresh();
    };
    connect(&m_model, &Model::storeChanged, this, refreshOnShow);
    connect(&session, &SessionStore::currentTillShiftChanged, this, refreshOnShow);
    connect(&session, &SessionStore::settingsChanged, this, refreshOnShow);
}

void DashboardView::showEvent(QShowEvent* event)
{
    QScrollArea::showEvent(event);
    // Every time, not only after a change: "today" may have become tomorrow since it last showed.
    refresh();
}

void DashboardView::refresh()
{
    m_model.refresh();
}
