#include "ui/history/saleshistoryview.h"

#include "clock/clock.h"
#include "environment/appenvironment.h"
#include "records/payment.h"
#include "records/saleitem.h"
#include "startup/sessionstore.h"
#include "ui/controls/emptystate.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/listdetail.h"
#include "ui/history/saledetail.h"
#include "ui/history/salerow.h"
#include "ui/history/saleslistmodel.h"
#include "ui/navigation/appsection.h"
#include "ui/style/theme.h"

#include <QDateEdit>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QStackedWidget>
#include <QVBoxLayout>

namespace {
constexpr int defaultDays = 30;

QDateEdit* makeDateField(const QDate& date, const QString& name, QWidget* parent)
{
    auto* field = new QDateEdit(date, parent);
    field->setCalendarPopup(true);
    field->setDisplayFormat(QStringLiteral("MMM d, yyyy"));
    field->setAccessibleName(name);
    field->setMinimumWidth(150);
    return field;
}
} // namespace

SalesHistoryView::SalesHistoryView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_environment(environment)
    , m_session(session)
{
    const QDate today = Clock::now().date();
    m_from = makeDateField(today.addDays(-defaultDays), QStringLiteral("From"), this);
    m_to = makeDateField(today, QStringLiteral("To"), this);
    m_search = makeSearchField(QStringLiteral("Search invoice, customer, cashier"), this);
    auto* filters = new QHBoxLayout;
    filters->setSpacing(10);
    filters->addWidget(new QLabel(QStringLiteral("From"), this));
    filters->addWidget(m_from);
    filters->addSpacing(6);
    filters->addWidget(new QLabel(QStringLiteral("To"), this));
    filters->addWidget(m_to);
    filters->addSpacing(6);
    filters->addWidget(m_search, 1);
    m_error = new ErrorLabel(this);

    m_rows = new SalesListModel(environment.modelContext(), this);
    m_list = new QListView(this);
    Theme::markCard(m_list);
    m_list->setAccessibleName(QStringLiteral("Sales"));
    m_list->setModel(m_rows);
    m_list->setItemDelegate(new SaleRow(m_list));
    // Every row has the same height: the view needn't measure a page to lay it out.
    m_list->setUniformItemSizes(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_list->setMouseTracking(true);
    m_listPages = new QStackedWidget(this);
    m_listPages->addWidget(m_list);
    m_listPages->addWidget(makeEmptyState(QStringLiteral("No transactions"),
                                          QStringLiteral("Adjust the date range or search to find a sale."),
                                          this));
    m_listPages->setFixedWidth(420);

    m_detailPages = new DetailPages(QStringLiteral("Select a transaction"),
                                    QStringLiteral("Choose a sale to view its full receipt detail."), this);
    auto* body = new QHBoxLayout;
    body->setSpacing(24);
    body->addWidget(m_listPages);
    body->addWidget(m_detailPages, 1);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 24, 20);
    layout->setSpacing(16);
    layout->addWidget(Theme::label(AppSections::title(AppSection::salesHistory), Theme::Text::title, this));
    layout->addLayout(filters);
    layout->addWidget(m_error);
    layout->addLayout(body, 1);

    auto* lazyRefresh = new LazyRefresh(this, [this] { refresh(); });
    environment.modelContext().onChange(this, {&Sale::schema(), &SaleItem::schema(), &Payment::schema()},
                                        [lazyRefresh] { lazyRefresh->request(); });
    connect(m_from, &QDateEdit::dateChanged, this, &SalesHistoryView::applyFilter);
    connect(m_to, &QDateEdit::dateChanged, this, &SalesHistoryView::applyFilter);
    connect(m_search, &QLineEdit::textChanged, this, &SalesHistoryView::applyFilter);
    connect(m_rows, &SalesListModel::errorMessageChanged, m_error,
            [this] { m_error->setMessage(m_rows->errorMessage()); });
    connect(&session, &SessionStore::currentUserChanged, this, &SalesHistoryView::applyFilter);
    connect(&session, &SessionStore::currentTillShiftChanged, this, &SalesHistoryView::showSelection);
    connect(&session, &SessionStore::settingsChanged, this, [this] {
        const Ref<AppSettings> settings = m_session.settings();
        m_rows->setCurrencySymbol(settings ? settings->currencySymbol() : QString());
        showSelection();
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentChanged, this,
            [this](const QModelIndex& current) {
                if (m_rebuilding || !current.isValid())
                    return;
                m_selectedID = current.data(SalesListModel::idRole).toUuid();
                showSelection();
            });

    if (const Ref<AppSettings> settings = session.settings())
        m_rows->setCurrencySymbol(settings->currencySymbol());
    applyFilter();
}

SalesHistory::Filter SalesHistoryView::filter() const
{
    SalesHistory::Filter filter;
    filter.startDate = m_from->date();
    filter.endDate = m_to->date();
    filter.searchText = m_search->text();
    filter.showSalesOf(m_session.currentUser().get());
    return filter;
}

void SalesHistoryView::applyFilter()
{
    m_rebuilding = true;
    m_rows->setFilter(filter());
    showList();
}

void SalesHistoryView::refresh()
{
    m_rebuilding = true;
    m_rows->reload();
    showList();
    if (m_detail)
        m_detail->refresh();
}

// The rows are read again: the chosen sale is marked again by id, with no choice made by it.
void SalesHistoryView::showList()
{
    const int row = m_rows->rowOf(m_selectedID);
    if (row >= 0)
        m_list->selectionModel()->setCurrentIndex(m_rows->index(row), QItemSelectionModel::ClearAndSelect);
    m_rebuilding = false;
    m_listPages->setCurrentIndex(m_rows->rowCount() > 0 ? 0 : 1);
}

void SalesHistoryView::showSelection()
{
    // Looked up among all sales, not the rows listed, so it stays while the filters change.
    Ref<Sale> sale;
    try {
        if (!m_selectedID.isNull())
            sale = m_environment.modelContext().find<Sale>(m_selectedID);
    } catch (const Refusal& refusal) {
        m_error->setMessage(refusal.description());
    }
    if (m_detail && m_detail->sale() != sale) {
        m_detail->deleteLater();
        m_detail = nullptr;
    }
    if (sale && !m_detail)
        m_detail = new SaleDetail(sale, m_environment, m_session, m_detailPages);
    else if (m_detail)
        m_detail->refresh();
    m_detailPages->showDetail(m_detail);
}

bool SalesHistoryView::selectSale(const QUuid& saleID)
{
    const int row = m_rows->rowOf(saleID);
    if (row < 0)
        return false;
    m_list->selectionModel()->setCurrentIndex(m_rows->index(row), QItemSelectionModel::ClearAndSelect);
    return true;
}

bool SalesHistoryView::isShowingNoSales() const
{
    return m_listPages->currentIndex() == 1;
}
