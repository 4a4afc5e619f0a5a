#include "ui/products/producteditform.h"

#include "refusal/refusal.h"
#include "stock/productsviewmodel.h"
#include "ui/controls/asktodelete.h"
#include "ui/controls/cards.h"
#include "ui/controls/errorlabel.h"
#include "ui/controls/formfooter.h"
#include "ui/controls/readingorder.h"
#include "ui/products/newcategorysheet.h"
#include "ui/products/newsuppliersheet.h"
#include "ui/style/theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScopeGuard>
#include <QScrollArea>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>
#include <array>

namespace {
// The same in every section, so that the fields of all the cards line up.
constexpr int captionWidth = 155;

constexpr std::array<ProductType, 3> productTypes{ProductType::inventory, ProductType::nonInventory,
                                                  ProductType::service};

// A section whose rows are laid out in `grid`: captions left, fields right.
QWidget* makeSection(const QString& heading, QGridLayout*& grid, QWidget* parent)
{
    auto* section = new Section(heading, parent);
    grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    grid->setColumnMinimumWidth(0, captionWidth);
    grid->setColumnStretch(1, 1);
    section->content()->addLayout(grid);
    return section;
}

// `line`, when given, holds the field with what goes beside it.
QLabel* addRow(QGridLayout* grid, const QString& caption, QWidget* field, QLayout* line = nullptr)
{
    const int row = grid->rowCount();
    auto* label = new QLabel(caption);
    label->setWordWrap(true);
    label->setFixedWidth(captionWidth);
    label->setBuddy(field);
    field->setAccessibleName(caption);
    grid->addWidget(label, row, 0, Qt::AlignLeft | Qt::AlignVCenter);
    if (line)
        grid->addLayout(line, row, 1);
    else
        grid->addWidget(field, row, 1);
    return label;
}

void addRow(QGridLayout* grid, QWidget* field)
{
    grid->addWidget(field, grid->rowCount(), 1);
}

// A field and a button beside it.
QHBoxLayout* pair(QWidget* field, QWidget* button)
{
    auto* line = new QHBoxLayout;
    line->setSpacing(8);
    line->addWidget(field, 1);
    line->addWidget(button);
    return line;
}

// A money entry with the store's sign before it.
QWidget* amountBox(QLineEdit* edit, const QString& symbol, QWidget* parent)
{
    auto* box = new QWidget(parent);
    auto* line = new QHBoxLayout(box);
    line->setContentsMargins(0, 0, 0, 0);
    line->setSpacing(6);
    line->addWidget(new QLabel(symbol, box));
    edit->setParent(box);
    edit->setAlignment(Qt::AlignRight);
    edit->setMaximumWidth(160);
    edit->setInputMethodHints(Qt::ImhFormattedNumbersOnly);
    line->addWidget(edit);
    line->addStretch();
    return box;
}

void setComboIndex(QComboBox* combo, int index)
{
    const QSignalBlocker blocker(combo);
    combo->setCurrentIndex(index);
}

using Entry = ProductsViewModel::Entry;

Entry entryOf(ProductEditForm::Field field)
{
    switch (field) {
    case ProductEditForm::Field::costPrice:
        return Entry::costPrice;
    case ProductEditForm::Field::sellingPrice:
        return Entry::sellingPrice;
    case ProductEditForm::Field::reorderLevel:
        return Entry::reorderLevel;
    case ProductEditForm::Field::commission:
        return Entry::commission;
    default:
        Q_UNREACHABLE();
    }
}

constexpr std::array<ProductEditForm::Field, 4> numberFields{
    ProductEditForm::Field::costPrice, ProductEditForm::Field::sellingPrice,
    ProductEditForm::Field::reorderLevel, ProductEditForm::Field::commission};
} // namespace

ProductEditForm::ProductEditForm(ProductsViewModel& model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
{
    Q_ASSERT(m_model.editedProduct());
    for (int i = 0; i < 7; ++i)
        m_fields.append(new QLineEdit(this));
    for (Field which : numberFields)
        m_fieldErrors.insert(which, new ErrorLabel(this));
    for (int i = 0; i < 5; ++i) {
        auto* combo = new QComboBox(this);
        // Long names are cut rather than widening the form past the screen.
        combo->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        combo->setMinimumContentsLength(6);
        showWholeChoice(combo);
        m_pickers.append(combo);
    }
    m_toggles = {new QCheckBox(QStringLiteral("Active"), this),
                 new QCheckBox(QStringLiteral("Taxable"), this),
                 new QCheckBox(QStringLiteral("Ask Who Did It"), this)};

    auto* scroll = new QScrollArea(this);
    scroll->setWidgetResizable(true);
    scroll->setFrameShape(QFrame::NoFrame);
    scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto* page = new QWidget(scroll);
    auto* sections = new QVBoxLayout(page);
    sections->setContentsMargins(16, 4, 16, 24);
    sections->setSpacing(22);
    for (QWidget* section :
         {buildIdentity(), buildPricing(), buildStock(), buildStaff(), buildCostHistory()}) {
        section->setParent(page);
        section->setMaximumWidth(760);
        sections->addWidget(section);
    }
    sections->addStretch();
    scroll->setWidget(page);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(scroll, 1);
    m_footer = new FormFooter(QStringLiteral("Delete Product"), this);
    m_footer->setObjectName(QStringLiteral("formFooter"));
    m_footer->setContentsMargins(16, 10, 16, 14);
    layout->addWidget(m_footer);

    reload();
    bind();
}

Ref<Product> ProductEditForm::product() const
{
    return m_model.editedProduct();
}

ErrorLabel* ProductEditForm::fieldErrorLabel(Field which) const
{
    return m_fieldErrors.value(which);
}

QLineEdit* ProductEditForm::field(Field which) const
{
    return m_fields[static_cast<int>(which)];
}

QComboBox* ProductEditForm::picker(Picker which) const
{
    return m_pickers[static_cast<int>(which)];
}

QCheckBox* ProductEditForm::toggle(Toggle which) const
{
    return m_toggles[static_cast<int>(which)];
}

QWidget* ProductEditForm::buildIdentity()
{
    QGridLayout* grid = nullptr;
    QWidget* section = makeSection(QStringLiteral("Identity"), grid, this);
    for (ProductType type : productTypes)
        picker(Picker::type)->addItem(ProductTypes::label(type));
    addRow(grid, QStringLiteral("Type"), picker(Picker::type));
    addRow(grid, QStringLiteral("Name"), field(Field::name));
    addRow(grid, QStringLiteral("SKU"), field(Field::sku));
    addRow(grid, QStringLiteral("Barcode"), field(Field::barcode));
    addRow(grid, toggle(Toggle::active));

    // Short, so that the picker keeps the room for the name.
    m_newCategory = new QPushButton(QStringLiteral("New…"), section);
    m_newCategory->setToolTip(QStringLiteral("New Category"));
    m_newCategory->setAccessibleName(QStringLiteral("New Category"));
    addRow(grid, QStringLiteral("Category"), picker(Picker::category),
           pair(picker(Picker::category), m_newCategory));
    m_newSupplier = new QPushButton(QStringLiteral("New…"), section);
    m_newSupplier->setToolTip(QStringLiteral("New Supplier"));
    m_newSupplier->setAccessibleName(QStringLiteral("New Supplier"));
    addRow(grid, QStringLiteral("Supplier"), picker(Picker::supplier),
           pair(picker(Picker::supplier), m_newSupplier));

    for (SellingUnit unit : SellingUnits::all)
        picker(Picker::unit)->addItem(SellingUnits::label(unit));
    addRow(grid, QStringLiteral("Sold By"), picker(Picker::unit));
    addRow(grid, Theme::label(ProductsViewModel::fractionNote(), Theme::Text::note, section));
    return section;
}

QWidget* ProductEditForm::buildPricing()
{
    QGridLayout* grid = nullptr;
    QWidget* section = makeSection(QStringLiteral("Pricing"), grid, this);
    const QString symbol = m_model.currencySymbol();
    m_costTitle = addRow(grid, QString(), amountBox(field(Field::costPrice), symbol, section));
    addRow(grid, fieldErrorLabel(Field::costPrice));
    m_priceTitle = addRow(grid, QString(), amountBox(field(Field::sellingPrice), symbol, section));
    addRow(grid, fieldErrorLabel(Field::sellingPrice));
    addRow(grid, toggle(Toggle::taxable));
    addRow(grid, Theme::label(QStringLiteral("Turn off for items with no VAT or levies at all."),
                              Theme::Text::note, section));

    auto* taxes = new QVBoxLayout;
    taxes->setSpacing(4);
    picker(Picker::taxGroup)->setPlaceholderText(QStringLiteral("Choose taxes"));
    taxes->addWidget(picker(Picker::taxGroup));
    m_taxSummary = Theme::label(QString(), Theme::Text::note, section);
    taxes->addWidget(m_taxSummary);
    m_noTax = new QLabel(QStringLiteral("No tax is charged on this item."), section);
    taxes->addWidget(m_noTax);
    auto* taxesCaption = new QLabel(QStringLiteral("Taxes"), section);
    taxesCaption->setBuddy(picker(Picker::taxGroup));
    taxesCaption->setFixedWidth(captionWidth);
    // Level with the picker's text, above the note that may follow it.
    taxesCaption->setContentsMargins(0, 7, 0, 0);
    picker(Picker::taxGroup)->setAccessibleName(QStringLiteral("Taxes"));
    const int row = grid->rowCount();
    grid->addWidget(taxesCaption, row, 0, Qt::AlignLeft | Qt::AlignTop);
    grid->addLayout(taxes, row, 1);

    m_margin = Theme::label(QString(), Theme::Text::strong, section);
    addRow(grid, QStringLiteral("Margin"), m_margin);
    return section;
}

QWidget* ProductEditForm::buildStock()
{
    QGridLayout* grid = nullptr;
    QWidget* section = makeSection(QStringLiteral("Inventory"), grid, this);
    m_stockOnHand = Theme::label(QString(), Theme::Text::strong, section);
    m_stockRows.append(addRow(grid, QStringLiteral("Stock on Hand"), m_stockOnHand));
    auto* stockNote =
        Theme::label(QStringLiteral("Use Inventory to change stock quantity so a movement is recorded."),
                     Theme::Text::note, section);
    addRow(grid, stockNote);
    // In a line of its own: a narrow field alone would narrow the whole column.
    field(Field::reorderLevel)->setMaximumWidth(160);
    auto* reorderLine = new QHBoxLayout;
    reorderLine->addWidget(field(Field::reorderLevel));
    reorderLine->addStretch();
    m_stockRows << m_stockOnHand << stockNote << field(Field::reorderLevel)
                << addRow(grid, QStringLiteral("Reorder Level"), field(Field::reorderLevel), reorderLine);
    addRow(grid, fieldErrorLabel(Field::reorderLevel));

    m_untrackedNote = Theme::label(QString(), Theme::Text::note, section);
    grid->addWidget(m_untrackedNote, grid->rowCount(), 0, 1, 2);
    m_uncountedNote = Theme::label(QString(), Theme::Text::note, section);
    grid->addWidget(m_uncountedNote, grid->rowCount(), 0, 1, 2);
    return section;
}

QWidget* ProductEditForm::buildStaff()
{
    QGridLayout* grid = nullptr;
    m_staffSection = makeSection(QStringLiteral("Staff & Commission"), grid, this);
    addRow(grid, toggle(Toggle::askForStaff));
    QLineEdit* commission = field(Field::commission);
    commission->setPlaceholderText(QStringLiteral("Staff's rate"));
    commission->setMaximumWidth(120);
    commission->setAlignment(Qt::AlignRight);
    auto* line = new QHBoxLayout;
    line->setSpacing(6);
    line->addWidget(commission);
    line->addWidget(new QLabel(QStringLiteral("%"), m_staffSection));
    line->addStretch();
    addRow(grid, QStringLiteral("Commission for This Service"), commission, line);
    addRow(grid, fieldErrorLabel(Field::commission));
    return m_staffSection;
}

QWidget* ProductEditForm::buildCostHistory()
{
    auto* section = new Section(QStringLiteral("Cost History"), this);
    m_historyRows = section->content();
    return section;
}

void ProductEditForm::bind()
{
    const auto text = [this](Field which, void (Product::*setter)(const QString&)) {
        connect(field(which), &QLineEdit::textEdited, this, [this, setter](const QString& typed) {
            ((*product()).*setter)(typed);
            changed();
        });
    };
    text(Field::name, &Product::setName);
    text(Field::sku, &Product::setSku);
    text(Field::barcode, &Product::setBarcode);

    for (Field which : numberFields)
        bindEntry(which);

    // clicked and activated, not toggled and currentIndexChanged: only the person's own choice acts.
    connect(toggle(Toggle::active), &QCheckBox::clicked, this, [this](bool on) {
        product()->setIsActive(on);
        changed();
    });
    connect(toggle(Toggle::taxable), &QCheckBox::clicked, this, [this](bool on) {
        m_model.setTaxable(on);
        showOrTell([this] { showTaxes(); });
        changed();
    });
    connect(toggle(Toggle::askForStaff), &QCheckBox::clicked, this, [this](bool on) {
        product()->setAskForStaff(on);
        changed();
    });
    connect(picker(Picker::type), &QComboBox::activated, this, [this](int index) {
        product()->setProductType(productTypes[size_t(index)]);
        showOrTell([this] { showType(); });
        changed();
    });
    connect(picker(Picker::unit), &QComboBox::activated, this, [this](int index) {
        product()->setSellingUnit(SellingUnits::all[size_t(index)]);
        showUnit();
        changed();
    });
    connect(picker(Picker::category), &QComboBox::activated, this, [this](int index) {
        product()->setCategory(index > 0 ? m_categories.value(index - 1) : nullptr);
        changed();
    });
    connect(picker(Picker::supplier), &QComboBox::activated, this, [this](int index) {
        product()->setSupplier(picker(Picker::supplier)->itemData(index).toString());
        changed();
    });
    connect(picker(Picker::taxGroup), &QComboBox::activated, this, [this](int index) {
        m_model.setTaxGroup(m_taxGroups.value(index));
        showOrTell([this] { showTaxes(); });
        changed();
    });

    connect(m_newCategory, &QPushButton::clicked, this, &ProductEditForm::openNewCategory);
    connect(m_newSupplier, &QPushButton::clicked, this, &ProductEditForm::openNewSupplier);
    connect(m_footer->saveButton(), &QPushButton::clicked, this, [this] { save(); });
    connect(m_footer->deleteButton(), &QPushButton::clicked, this, &ProductEditForm::confirmDelete);
}

// What is typed counts once it reads as a number; leaving the field shows the number taken, or
// keeps the text with the reason it can't be taken.
void ProductEditForm::bindEntry(Field which)
{
    QLineEdit* edit = field(which);
    connect(edit, &QLineEdit::textEdited, this, [this, which](const QString& typed) {
        m_model.enter(entryOf(which), typed);
        showEntryProblem(which);
        showMargin();
        changed();
    });
    connect(edit, &QLineEdit::editingFinished, this, [this, edit, which] {
        if (!m_model.entryProblem(entryOf(which)))
            edit->setText(ProductsViewModel::entryText(*product(), entryOf(which)));
    });
}

void ProductEditForm::showEntryProblem(Field which)
{
    fieldErrorLabel(which)->setMessage(m_model.entryProblem(entryOf(which)));
}

void ProductEditForm::focusName()
{
    field(Field::name)->setFocus();
    field(Field::name)->selectAll();
}

template <class Show> void ProductEditForm::showOrTell(Show show)
{
    try {
        show();
    } catch (const Refusal& refusal) {
        m_footer->errorLabel()->setMessage(refusal.description());
    }
}

void ProductEditForm::reload()
{
    showOrTell([this] { fill(); });
}

void ProductEditForm::fill()
{
    const Product& product = *this->product();
    field(Field::name)->setText(product.name());
    field(Field::sku)->setText(product.sku());
    field(Field::barcode)->setText(product.barcode());
    for (Field which : numberFields) {
        field(which)->setText(ProductsViewModel::entryText(product, entryOf(which)));
        showEntryProblem(which);
    }
    m_footer->showNewRecord(m_model.isNewProduct());
    toggle(Toggle::active)->setChecked(product.isActive());
    toggle(Toggle::askForStaff)->setChecked(product.askForStaff());
    setComboIndex(picker(Picker::type),
                  int(std::find(productTypes.begin(), productTypes.end(), product.productType()) -
                      productTypes.begin()));
    setComboIndex(picker(Picker::unit),
                  int(std::find(SellingUnits::all.begin(), SellingUnits::all.end(), product.sellingUnit()) -
                      SellingUnits::all.begin()));
    fillCategories();
    fillSuppliers();
    fillTaxGroups();
    showType();
    showCostHistory();
}

void ProductEditForm::refresh()
{
    showOrTell([this] {
        fillCategories();
        fillSuppliers();
        fillTaxGroups();
        showTaxes();
        showMargin();
        showStock();
        showCostHistory();
    });
}

void ProductEditForm::fillCategories()
{
    m_categories = m_model.categories();
    QComboBox* combo = picker(Picker::category);
    const QSignalBlocker blocker(combo);
    combo->clear();
    combo->addItem(QStringLiteral("None"));
    const Ref<Category> current = product()->category();
    for (const Ref<Category>& category : m_categories) {
        combo->addItem(category->name());
        if (category == current)
            combo->setCurrentIndex(combo->count() - 1);
    }
}

void ProductEditForm::fillSuppliers()
{
    QComboBox* combo = picker(Picker::supplier);
    const QSignalBlocker blocker(combo);
    combo->clear();
    combo->addItem(QStringLiteral("None"), QString());
    const QString current = product()->supplier();
    for (const Ref<Supplier>& supplier : m_model.suppliers())
        combo->addItem(supplier->name(), supplier->name());
    // A name that no supplier has any more (renamed, removed, imported) stays as it is.
    int index = combo->findData(current);
    if (index < 0) {
        combo->addItem(current, current);
        index = combo->count() - 1;
    }
    combo->setCurrentIndex(index);
}

void ProductEditForm::fillTaxGroups()
{
    m_taxGroups = m_model.taxGroups();
    QComboBox* combo = picker(Picker::taxGroup);
    const QSignalBlocker blocker(combo);
    combo->clear();
    const Ref<TaxGroup> current = product()->taxGroup();
    combo->setCurrentIndex(-1);
    for (const Ref<TaxGroup>& group : m_taxGroups) {
        combo->addItem(group->name());
        if (group == current)
            combo->setCurrentIndex(combo->count() - 1);
    }
}

void ProductEditForm::showType()
{
    const ProductType type = product()->productType();
    for (QWidget* row : m_stockRows)
        row->setVisible(type == ProductType::inventory);
    m_untrackedNote->setVisible(type != ProductType::inventory);
    if (type == ProductType::nonInventory)
        m_untrackedNote->setText(
            QStringLiteral("Non-inventory items are sold without counting stock — no stock "
                           "levels, low-stock alerts or stock value."));
    else if (type == ProductType::service)
        m_untrackedNote->setText(QStringLiteral("Services have no stock. They're always available to sell."));
    m_staffSection->setVisible(type == ProductType::service);
    showUnit();
    showTaxes();
    showCostHistory();
}

void ProductEditForm::showUnit()
{
    const SellingUnit unit = product()->sellingUnit();
    m_costTitle->setText(ProductsViewModel::costPriceTitle(unit));
    m_priceTitle->setText(ProductsViewModel::sellingPriceTitle(unit));
    field(Field::costPrice)->setAccessibleName(m_costTitle->text());
    field(Field::sellingPrice)->setAccessibleName(m_priceTitle->text());
    showMargin();
    showStock();
}

void ProductEditForm::showTaxes()
{
    const bool taxable = product()->isTaxable();
    toggle(Toggle::taxable)->setChecked(taxable);
    picker(Picker::taxGroup)->setVisible(taxable);
    const QString summary = ProductsViewModel::taxSummary(*product());
    m_taxSummary->setText(summary);
    m_taxSummary->setVisible(taxable && !summary.isEmpty());
    m_noTax->setVisible(!taxable);
    setComboIndex(picker(Picker::taxGroup), int(m_taxGroups.indexOf(product()->taxGroup())));
}

void ProductEditForm::showMargin()
{
    // No figure from a price that couldn't be read.
    const bool unreadable = m_model.entryProblem(Entry::costPrice) || m_model.entryProblem(Entry::sellingPrice);
    m_margin->setText(unreadable ? QStringLiteral("—") : m_model.marginText(*product()));
}

void ProductEditForm::showStock()
{
    const double stock = m_model.stockOnHand();
    m_stockOnHand->setText(ProductsViewModel::stockOnHandText(*product(), stock));
    const std::optional<QString> uncounted = ProductsViewModel::uncountedStockNote(*product(), stock);
    m_uncountedNote->setText(uncounted.value_or(QString()));
    m_uncountedNote->setVisible(uncounted.has_value());
}

void ProductEditForm::showCostHistory()
{
    // Made anew each time: the rows are few.
    delete m_historyBody;
    m_historyBody = new QWidget(m_historyRows->parentWidget());
    auto* column = new QVBoxLayout(m_historyBody);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(10);
    m_historyRows->addWidget(m_historyBody);
    // Filled before it is shown: children added to a widget on show would stay hidden.
    const auto shown = qScopeGuard([this] { m_historyBody->setVisible(true); });

    const QList<CostHistoryRow> rows = m_model.costHistoryRows(product());
    if (rows.isEmpty()) {
        column->addWidget(Theme::label(ProductsViewModel::costHistoryEmptyText(*product()), Theme::Text::note,
                                       m_historyBody));
        return;
    }
    for (const CostHistoryRow& row : rows) {
        // Two lines, so that the history fits beside the list on a small screen.
        auto* line = new QHBoxLayout;
        line->setSpacing(16);
        auto* what = new QLabel(row.what, m_historyBody);
        what->setWordWrap(true);
        line->addWidget(what, 1);
        line->addWidget(new QLabel(row.change, m_historyBody), 0, Qt::AlignTop);
        auto* entry = new QVBoxLayout;
        entry->setSpacing(1);
        entry->addLayout(line);
        entry->addWidget(Theme::label(row.date, Theme::Text::note, m_historyBody));
        column->addLayout(entry);
    }
    if (const std::optional<QString> more =
            ProductsViewModel::costHistoryMoreText(m_model.costHistoryCount(product())))
        column->addWidget(Theme::label(*more, Theme::Text::note, m_historyBody));
}

void ProductEditForm::changed()
{
    m_footer->markEdited();
    Q_EMIT edited();
}

bool ProductEditForm::save()
{
    const std::optional<QString> failure = m_model.save();
    m_footer->showSaveResult(failure);
    // The save trimmed the name and codes; a new product can now be deleted.
    if (!failure)
        reload();
    return !failure;
}

void ProductEditForm::confirmDelete()
{
    askToDelete(this, ProductsViewModel::deleteTitle(), ProductsViewModel::deleteMessage(),
                [this] { m_model.deleteProduct(); });
}

void ProductEditForm::openNewCategory()
{
    auto* sheet = new NewCategorySheet(
        m_model,
        [this](const Ref<Category>& category) {
            product()->setCategory(category);
            fillCategories();
            changed();
        },
        this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

void ProductEditForm::openNewSupplier()
{
    auto* sheet = new NewSupplierSheet(
        m_model,
        [this](const Ref<Supplier>& supplier) {
            product()->setSupplier(supplier->name());
            fillSuppliers();
            changed();
        },
        this);
    sheet->setAttribute(Qt::WA_DeleteOnClose);
    sheet->open();
}

bool ProductEditForm::focusNextPrevChild(bool next)
{
    return ReadingOrder::focusNext(this, next) || QWidget::focusNextPrevChild(next);
}
