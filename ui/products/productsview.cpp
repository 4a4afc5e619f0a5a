#include "ui/products/productsview.h"

#include "environment/appenvironment.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/listdetail.h"
#include "ui/products/producteditform.h"
#include "ui/products/productlistdelegate.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>
#include <QShowEvent>
#include <QSignalBlocker>
#include <QTimer>
#include <QVBoxLayout>

#include <array>

namespace {
constexpr std::array<ProductType, 3> productTypes{ProductType::inventory, ProductType::nonInventory,
                                                  ProductType::service};
} // namespace

ProductsView::ProductsView(AppEnvironment& environment, SessionStore& session, QWidget* parent)
    : QWidget(parent)
    , m_model(environment.modelContext(), session)
{
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(32, 28, 32, 24);
    layout->setSpacing(14);
    layout->addWidget(buildHeader());
    layout->addWidget(buildFilterBar());
    m_error = new ErrorLabel(this);
    layout->addWidget(m_error);
    m_listCard = new RecordListCard(QStringLiteral("Products"), ProductsViewModel::emptyTitle(),
                                    ProductsViewModel::emptyMessage(), this);
    m_listCard->setFixedWidth(recordListWidth);
    list()->setItemDelegate(new ProductListDelegate(list()));
    m_detail =
        new DetailPages(ProductsViewModel::noSelectionTitle(), ProductsViewModel::noSelectionMessage(), this);
    auto* body = new QHBoxLayout;
    body->setSpacing(8);
    body->addWidget(m_listCard);
    body->addWidget(m_detail, 1);
    layout->addLayout(body, 1);

    connect(&m_model, &ProductsViewModel::errorMessageChanged, this,
            [this] { m_error->setMessage(m_model.errorMessage()); });
    connect(&m_model, &ProductsViewModel::filtersChanged, this, [this] {
        // The model clears filters that would hide a new draft.
        if (m_search->text() != m_model.searchText())
            m_search->setText(m_model.searchText());
        m_lowStock->setChecked(m_model.showOnlyLowStock());
        m_inactive->setChecked(m_model.showOnlyInactive());
        const std::optional<ProductType> type = m_model.typeFilter();
        const QSignalBlocker blocker(m_type);
        m_type->setCurrentIndex(
            type ? int(std::find(productTypes.begin(), productTypes.end(), *type) - productTypes.begin()) + 1
                 : 0);
        refreshList();
    });
    connect(&m_model, &ProductsViewModel::selectionChanged, this, &ProductsView::showSelection);
    connect(m_listCard, &RecordListCard::rowChosen, this, [this](int row) {
        const Ref<Product> chosen = m_listed[row];
        if (chosen != m_model.selectedProduct())
            openAfterAsking(
                [this] { m_listCard->showChosenRow(int(m_listed.indexOf(m_model.selectedProduct()))); },
                [this, chosen] { m_model.select(chosen); });
    });
    connect(&m_model, &ProductsViewModel::productsChanged, this, [this] {
        fillCategoryFilter();
        // Not while the list is in the middle of changing its current row: it is rebuilt after.
        if (m_listCard->isChoosing())
            QTimer::singleShot(0, this, &ProductsView::refreshList);
        else
            refreshList();
        if (m_form)
            m_form->refresh();
    });

    fillCategoryFilter();
    refreshList();
}

QWidget* ProductsView::buildHeader()
{
    auto* header = new QWidget(this);
    auto* line = new QHBoxLayout(header);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(2);
    line->addWidget(Theme::label(QStringLiteral("Products"), Theme::Text::title, header));
    line->addStretch();

    m_newProduct = new QPushButton(ProductsViewModel::newProductTitle(), header);
    Theme::markPrimary(m_newProduct);
    m_newProductMore = new QPushButton(QStringLiteral("▾"), header);
    Theme::markPrimary(m_newProductMore);
    m_newProductMore->setAccessibleName(ProductsViewModel::newProductMenuHelp());
    m_newProductMore->setToolTip(ProductsViewModel::newProductMenuHelp());
    m_newProductMenu = new QMenu(m_newProductMore);
    m_newProductMenu->setToolTipsVisible(true);
    for (ProductType type : productTypes) {
        QAction* action = m_newProductMenu->addAction(ProductTypes::label(type));
        connect(action, &QAction::triggered, this, [this, type] { newProduct(type); });
    }
    // Popped up by hand: a button's own menu arrow would sit beside this one.
    connect(m_newProductMore, &QPushButton::clicked, this, [this] {
        m_newProductMenu->popup(m_newProductMore->mapToGlobal(QPoint(0, m_newProductMore->height())));
    });
    line->addWidget(m_newProduct);
    line->addWidget(m_newProductMore);
    connect(m_newProduct, &QPushButton::clicked, this, [this] { newProduct(std::nullopt); });
    return header;
}

QWidget* ProductsView::buildFilterBar()
{
    auto* bar = new QWidget(this);
    auto* line = new QHBoxLayout(bar);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(10);

    m_search = makeSearchField(ProductsViewModel::searchPrompt(), bar);
    m_search->setMinimumWidth(180);
    line->addWidget(m_search, 2);

    m_category = new QComboBox(bar);
    m_category->setAccessibleName(QStringLiteral("Category"));
    m_category->setMinimumWidth(140);
    line->addWidget(m_category, 1);

    auto* typeCaption = new QLabel(ProductsViewModel::typeTitle(), bar);
    m_type = new QComboBox(bar);
    typeCaption->setBuddy(m_type);
    m_type->setAccessibleName(ProductsViewModel::typeTitle());
    m_type->setToolTip(ProductsViewModel::typeFilterHelp());
    m_type->addItem(ProductsViewModel::allTypesTitle());
    for (ProductType type : productTypes)
        m_type->addItem(ProductsViewModel::typeFilterTitle(type));
    line->addSpacing(6);
    line->addWidget(typeCaption);
    line->addWidget(m_type, 1);

    m_lowStock = new QCheckBox(ProductsViewModel::lowStockTitle(), bar);
    m_inactive = new QCheckBox(ProductsViewModel::inactiveTitle(), bar);
    line->addSpacing(6);
    line->addWidget(m_lowStock);
    line->addWidget(m_inactive);

    connect(m_search, &QLineEdit::textChanged, &m_model, &ProductsViewModel::setSearchText);
    connect(m_category, &QComboBox::activated, this, [this](int index) {
        const QUuid id(m_category->itemData(index).toString());
        m_model.setSelectedCategoryID(id.isNull() ? std::nullopt : std::optional(id));
    });
    connect(m_type, &QComboBox::activated, this, [this](int index) {
        m_model.setTypeFilter(index > 0 ? std::optional(productTypes[size_t(index - 1)]) : std::nullopt);
    });
    connect(m_lowStock, &QCheckBox::toggled, &m_model, &ProductsViewModel::setShowOnlyLowStock);
    connect(m_inactive, &QCheckBox::toggled, &m_model, &ProductsViewModel::setShowOnlyInactive);
    return bar;
}

void ProductsView::fillCategoryFilter()
{
    const QSignalBlocker blocker(m_category);
    m_category->clear();
    m_category->addItem(ProductsViewModel::allCategoriesTitle(), QString());
    const std::optional<QUuid> chosen = m_model.selectedCategoryID();
    bool stillThere = false;
    for (const Ref<Category>& category : m_model.categories()) {
        m_category->addItem(category->name(), category->id().toString());
        if (chosen == category->id()) {
            m_category->setCurrentIndex(m_category->count() - 1);
            stillThere = true;
        }
    }
    if (chosen && !stillThere)
        m_model.setSelectedCategoryID(std::nullopt);
}

QListWidget* ProductsView::list() const
{
    return m_listCard->list();
}

void ProductsView::refreshList()
{
    m_listed = m_model.products();
    m_listCard->refill([this] {
        const Ref<Product> selected = m_model.selectedProduct();
        for (const Ref<Product>& product : std::as_const(m_listed)) {
            auto* item = new QListWidgetItem(list());
            // The product on the form shows what is being typed.
            ProductListDelegate::fill(item, m_model.row(product == selected ? m_model.editedProduct() : product));
            if (product == selected)
                list()->setCurrentItem(item);
        }
    });
}

void ProductsView::updateEditedRow()
{
    const qsizetype row = m_listed.indexOf(m_model.selectedProduct());
    if (row >= 0)
        ProductListDelegate::fill(list()->item(int(row)), m_model.row(m_model.editedProduct()));
}

void ProductsView::showSelection()
{
    if (m_form) {
        m_detail->removeWidget(m_form);
        // It may be the form's own button that cleared the selection.
        m_form->deleteLater();
        m_form = nullptr;
    }
    // A new product has no row until it is saved.
    m_listCard->showChosenRow(int(m_listed.indexOf(m_model.selectedProduct())));
    if (m_model.editedProduct()) {
        m_form = new ProductEditForm(m_model, m_detail);
        connect(m_form, &ProductEditForm::edited, this, &ProductsView::updateEditedRow);
    }
    m_detail->showDetail(m_form);
    // Rows typed into and then dropped show their saved values again.
    if (m_listCard->isChoosing())
        QTimer::singleShot(0, this, &ProductsView::refreshList);
    else
        refreshList();
}

void ProductsView::newProduct(std::optional<ProductType> type)
{
    askToLeave([this, type] {
        if (m_model.newProduct(type) && m_form)
            m_form->focusName();
    });
}

QString ProductsView::editedName() const
{
    const Ref<Product> product = m_model.editedProduct();
    return nameOrTitle(product->name(), ProductsViewModel::draftName(product->productType()));
}

bool ProductsView::saveEdits()
{
    return m_form && m_form->save();
}

QStringList ProductsView::listedNames() const
{
    QStringList names;
    for (int row = 0; row < list()->count(); ++row)
        names.append(list()->item(row)->text());
    return names;
}

void ProductsView::selectRow(int row)
{
    list()->setCurrentRow(row);
}

void ProductsView::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (event->spontaneous())
        return;
    m_newProduct->setToolTip(ProductsViewModel::newProductHelp(m_model.defaultType()));
    refreshList();
    if (m_form)
        m_form->refresh();
}
