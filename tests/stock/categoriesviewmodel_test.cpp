#include "stock/categoriesviewmodel.h"

#include "stockbuilders.h"
#include "support/teststore.h"

#include <gtest/gtest.h>

namespace {
class CategoriesTest : public ::testing::Test {
protected:
    Ref<Category> addCategory(const QString& name)
    {
        auto category = std::make_shared<Category>();
        category->setName(name);
        return store.saved(category);
    }

    QStringList listed()
    {
        QStringList rows;
        for (const RecordListRow& row : model.page())
            rows << row.name + QStringLiteral(": ") + row.detail;
        return rows;
    }

    TestStore store;
    ModelContext& context = store.context();
    CategoriesViewModel model{context};
    Ref<Category> drinks = addCategory(QStringLiteral("Drinks"));
    Ref<Category> spices = addCategory(QStringLiteral("Épices"));
};
} // namespace

TEST_F(CategoriesTest, RenameRefusesAnEmptyNameOrAnotherCategorysInAnyCase)
{
    const struct {
        const char* typed;
        std::optional<QString> refusal;
        const char* stored; // Drinks' name afterwards
    } cases[] = {
        {"   ", "Enter a category name.", "Drinks"},
        {"ÉPICES", "There's already a category called “Épices”.", "Drinks"},   // beyond ASCII case
        {" épices ", "There's already a category called “Épices”.", "Drinks"}, // blanks aside
        {"DRINKS", std::nullopt, "DRINKS"},                                    // its own name, recased
        {"  Cold Drinks ", std::nullopt, "Cold Drinks"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.typed);
        EXPECT_EQ(model.rename(drinks->id(), QString::fromUtf8(c.typed)), c.refusal);
        EXPECT_EQ(drinks->name(), QString::fromUtf8(c.stored));
        EXPECT_EQ(context.scalar(QStringLiteral("SELECT name FROM Category WHERE id = ?"), {drinks->idText()})
                      .toString(),
                  QString::fromUtf8(c.stored))
            << "in the file";
    }
}

TEST_F(CategoriesTest, DeleteKeepsTheProductsWithoutACategoryAndSaysHowMany)
{
    for (const char* name : {"Cola", "Malt"})
        addProduct(context, {.name = QString::fromUtf8(name)})->setCategory(drinks);
    const Ref<Product> pepper = addProduct(context, {.name = QStringLiteral("Pepper")});
    pepper->setCategory(spices);
    context.save();
    EXPECT_EQ(listed(), (QStringList{"Drinks: 2 products", "Épices: 1 product"}));
    EXPECT_EQ(CategoriesViewModel::deleteConsequences(model.productCount(drinks->id())),
              "Its 2 products stay in Products, with no category.");
    EXPECT_EQ(CategoriesViewModel::deleteConsequences(0), "It holds no products.");

    EXPECT_EQ(model.remove(drinks->id()), std::nullopt);
    EXPECT_EQ(model.remove(drinks->id()), CategoriesViewModel::goneMessage()) << "deleted twice";
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Category")), 1);
    EXPECT_EQ(countRowsOnDisk(store.path(), QStringLiteral("Product")), 3);
    EXPECT_EQ(context.count<Product>(Product::Col::category.isNull()), 2);
    EXPECT_EQ(pepper->category(), spices);
}
