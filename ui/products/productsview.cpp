#include "ui/products/productsview.h"

#include "environment/appenvironment.h"
#include "ui/controls/asktosavechanges.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfields.h"
#include "ui/controls/listdetail.h"
#include "ui/products/categoriessheet.h"
#include "ui/products/producteditform.h"
#include "ui/products/productlistdelegate.h"
#include "ui/products/productlistmodel.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
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
    , m_context(environment.modelContext())
    , m_model(m_context, session)
    , m_rows(new ProductListModel(m_model, this))
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
    m_listCard->setModel(m_rows);
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
        refreshList(true);
    });
    connect(&m_model, &ProductsViewModel::selectionChanged, this, &ProductsView::showSelection);
    connect(m_listCard, &RecordListCard::rowChosen, this, [this](int row) {
        const QUuid chosen = m_rows->productID(row);
        const Ref<Product> selected = m_model.selectedProduct();
        if (!selected || chosen != selected->id())
            openAfterAsking([this] { showChosenRow(); },
                            [this, chosen] {
                                if (const Ref<Product> product = m_model.product(chosen))
                                    m_model.select(product);
                                else
                                    showChosenRow();
                            });
    });
    connect(&m_model, &ProductsViewModel::productsChanged, this, [this] {
        fillCategoryFilter();
        // Not while the list is in the middle of changing its current row: it is rebuilt after.
        if (m_listCard->isChoosing())
            QTimer::singleShot(0, this, [this] { refreshList(); });
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

    m_categories = new QPushButton(CategoriesViewModel::buttonTitle(), header);
    m_categories->setToolTip(QStringLiteral("Rename or delete categories"));
    connect(m_categories, &QPushButton::clicked, this, [this] {
        auto* sheet = new CategoriesSheet(m_context, this);
        sheet->setAttribute(Qt::WA_DeleteOnClose);
        sheet->open();
    });
    line->addWidget(m_categories);
    line->addSpacing(8);

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

CategoriesSheet* ProductsView::categoriesSheet() const
{
    for (CategoriesSheet* sheet : findChildren<CategoriesSheet*>(Qt::FindDirectChildrenOnly)) {
        if (sheet->isVisible())
            return sheet;
    }
    return nullptr;
}

QListView* ProductsView::list() const
{
    return m_listCard->list();
}

void ProductsView::refreshList(bool fromTop)
{
    if (fromTop)
        m_rows->restart();
    else
        m_rows->reload();
    showChosenRow();
    updateEditedRow();
}

void ProductsView::showChosenRow()
{
    // A product the filters hide has no row to look for: the search would read every page.
    const Ref<Product> selected = m_model.selectedProduct();
    const bool listed = selected && !m_model.filtered({selected}).isEmpty();
    m_listCard->showChosenRow(listed ? m_rows->rowOf(selected->id()) : -1);
}

void ProductsView::updateEditedRow()
{
    // A new product has no row until it is saved.
    m_rows->showEdited(m_model.selectedProduct() ? std::optional(m_model.row(m_model.editedProduct()))
                                                 : std::nullopt);
}

void ProductsView::showSelection()
{
    if (m_form) {
        m_detail->removeWidget(m_form);
        // It may be the form's own button that cleared the selection.
        m_form->deleteLater();
        m_form = nullptr;
    }
    // Rows typed into and then dropped show their saved values again.
    updateEditedRow();
    showChosenRow();
    if (m_model.editedProduct()) {
        m_form = new ProductEditForm(m_model, m_detail);
        connect(m_form, &ProductEditForm::edited, this, &ProductsView::updateEditedRow);
    }
    m_detail->showDetail(m_form);
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
    for (int row = 0; row < m_rows->rowCount(); ++row)
        names.append(m_rows->index(row).data().toString());
    return names;
}

void ProductsView::selectRow(int row)
{
    m_listCard->chooseRow(row);
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
