#include "ui/inventory/inventoryview.h"

#include "money/currency.h"
#include "money/quantity.h"
#include "startup/sessionstore.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/lazyrefresh.h"
#include "ui/controls/listdetail.h"
#include "ui/controls/tables.h"
#include "ui/inventory/productinventorydetail.h"
#include "ui/style/theme.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QStandardItemModel>
#include <QTableView>
#include <QVBoxLayout>

namespace {
enum Column { nameColumn, skuColumn, onHandColumn };
const QColor lowStockColour(0xc6, 0x28, 0x28);

QList<QStandardItem*> makeRow(const Product& product)
{
    auto* name = new QStandardItem(product.name());
    auto* sku = new QStandardItem(product.sku());
    auto* onHand = new QStandardItem(Quantity::format(product.stockQuantity(), product.sellingUnit()));
    onHand->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    if (product.isLowStock()) {
        onHand->setForeground(lowStockColour);
        QFont font = onHand->font();
        font.setWeight(QFont::DemiBold);
        onHand->setFont(font);
        const QString note = QStringLiteral("Low stock: at or below the reorder level of %1.")
                                 .arg(Quantity::format(product.reorderLevel(), product.sellingUnit()));
        onHand->setToolTip(note);
        onHand->setAccessibleDescription(note);
    }
    QList<QStandardItem*> row{name, sku, onHand};
    for (QStandardItem* item : row)
        item->setEditable(false);
    return row;
}
} // namespace

InventoryView::InventoryView(ModelContext& context, InventoryServicing& inventory, SessionStore& session,
                             QWidget* parent)
    : QWidget(parent)
    , m_model(context)
    , m_session(session)
{
    auto* figures = new QHBoxLayout;
    figures->setSpacing(12);
    m_stockValue = addFigureCard(figures, QStringLiteral("Stock Value"), this);
    m_lowStock = addFigureCard(figures, QStringLiteral("Low Stock"), this);
    for (QLabel* figure : {m_stockValue, m_lowStock})
        figure->parentWidget()->setMinimumWidth(180);
    figures->addStretch();
    auto* error = new ErrorLabel(this);

    m_search = makeSearchField(QStringLiteral("Search products"), this);
    m_search->setObjectName(QStringLiteral("search"));

    m_rows = new QStandardItemModel(0, 3, this);
    m_rows->setHorizontalHeaderLabels(
        {QStringLiteral("Product"), QStringLiteral("SKU"), QStringLiteral("On Hand")});
    m_rows->horizontalHeaderItem(onHandColumn)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_list = new QTableView(this);
    Theme::markCard(m_list);
    m_list->setObjectName(QStringLiteral("products"));
    m_list->setModel(m_rows);
    setUpRecordTable(m_list, QStringLiteral("Products"), 34);
    m_list->horizontalHeader()->setSectionResizeMode(nameColumn, QHeaderView::Stretch);
    m_list->horizontalHeader()->setSectionResizeMode(skuColumn, QHeaderView::Interactive);
    m_list->horizontalHeader()->setSectionResizeMode(onHandColumn, QHeaderView::ResizeToContents);
    m_list->horizontalHeader()->resizeSection(skuColumn, 96);
    m_list->horizontalHeader()->setHighlightSections(false);
    m_list->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    m_listPane = new SearchListPane(m_search, m_list, QStringLiteral("No products match “%1”."), this);
    m_listPane->setFixedWidth(400);

    m_detail = new ProductInventoryDetail(m_model, context, inventory, session, this);
    m_detailPages = new DetailPages(
        QStringLiteral("Select a product"),
        QStringLiteral("Pick a product to see its stock history and make adjustments."), this);
    m_detailPages->addWidget(m_detail);
    m_body =
        new ListDetailBody(m_listPane, m_detailPages, QStringLiteral("No stock-tracked items"),
                           QStringLiteral("Only Inventory Items have stock to count. Non-inventory items and "
                                          "services are sold without stock — manage them in Products."),
                           this);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(16);
    layout->addWidget(Theme::label(QStringLiteral("Inventory"), Theme::Text::title, this));
    layout->addLayout(figures);
    layout->addWidget(error);
    layout->addWidget(m_body, 1);

    // Changes while the screen is hidden (a sale at the till) wait until it is shown again.
    auto* lazyRefresh = new LazyRefresh(this, [this] { refresh(); });
    connect(m_search, &QLineEdit::textChanged, &m_model, &InventoryViewModel::setSearchText);
    connect(&m_model, &InventoryViewModel::searchTextChanged, this, [this] {
        refreshList();
        showSelection();
    });
    connect(&m_model, &InventoryViewModel::errorMessageChanged, error,
            [this, error] { error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &InventoryViewModel::inventoryChanged, lazyRefresh, &LazyRefresh::request);
    connect(&m_session, &SessionStore::settingsChanged, this, [this] {
        refreshSummary();
        m_detail->refresh();
    });
    connect(m_list->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                if (m_rebuilding)
                    return;
                m_selectedID = current.isValid() ? m_products[current.row()]->id() : QUuid();
                showSelection();
            });
    refresh();
}

void InventoryView::refresh()
{
    refreshSummary();
    refreshList();
    showSelection();
}

QString InventoryView::currencySymbol() const
{
    const Ref<AppSettings> settings = m_session.settings();
    return settings ? settings->currencySymbol() : Currency::fixedSign;
}

void InventoryView::refreshSummary()
{
    m_stockValue->setText(m_model.stockValueText(currencySymbol()));
    m_lowStock->setText(QString::number(m_model.lowStockCount()));
}

void InventoryView::refreshList()
{
    m_products = m_model.products();
    // Rebuilt rather than patched: one pass over a few thousand rows, and only when something
    // changed. The chosen product is chosen again by id.
    const QUuid selected = m_selectedID;
    // The rows going and the choice being restored are not the person's doing.
    m_rebuilding = true;
    m_rows->removeRows(0, m_rows->rowCount());
    int selectedRow = -1;
    for (int row = 0; row < m_products.size(); ++row) {
        m_rows->appendRow(makeRow(*m_products[row]));
        if (m_products[row]->id() == selected)
            selectedRow = row;
    }
    m_selectedID = selectedRow < 0 ? QUuid() : selected;
    if (selectedRow >= 0)
        m_list->selectionModel()->setCurrentIndex(m_rows->index(selectedRow, nameColumn),
                                                  QItemSelectionModel::ClearAndSelect |
                                                      QItemSelectionModel::Rows);
    m_rebuilding = false;

    m_body->showNoRecords(m_products.isEmpty() && m_model.searchText().isEmpty());
    m_listPane->showMatches(m_model.searchText(), !m_products.isEmpty());
    m_list->setVisible(!m_listPane->isShowingNoMatches());
}

void InventoryView::showSelection()
{
    Ref<Product> product;
    for (const Ref<Product>& listed : std::as_const(m_products)) {
        if (listed->id() == m_selectedID)
            product = listed;
    }
    if (!product) {
        m_detailPages->showDetail(nullptr);
        m_detail->setProduct(nullptr);
        return;
    }
    if (m_detail->product() == product)
        m_detail->refresh();
    else
        m_detail->setProduct(product);
    m_detailPages->showDetail(m_detail);
}

bool InventoryView::selectProduct(const QUuid& productID)
{
    for (int row = 0; row < m_products.size(); ++row) {
        if (m_products[row]->id() == productID) {
            m_list->selectionModel()->setCurrentIndex(m_rows->index(row, nameColumn),
                                                      QItemSelectionModel::ClearAndSelect |
                                                          QItemSelectionModel::Rows);
            return true;
        }
    }
    return false;
}

bool InventoryView::isShowingNoItems() const
{
    return m_body->isShowingNoRecords();
}

bool InventoryView::isShowingDetail() const
{
    return !m_body->isShowingNoRecords() && !m_detailPages->isShowingPrompt();
}
