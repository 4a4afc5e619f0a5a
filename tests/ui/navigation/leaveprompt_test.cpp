#include "ui/controls/errorlabel.h"
#include "ui/controls/screentest.h"
#include "ui/products/producteditform.h"
#include "ui/products/productsview.h"
#include "ui/stores/marketcommands.h"
#include "ui/suppliers/suppliersview.h"

#include "stock/stockbuilders.h"
#include "support/faultloop.h"

#include <QLineEdit>
#include <QPushButton>

#include <sqlite3.h>

namespace {
enum class Answer { save, discard, cancel };

// Unsaved edits on the Products form, and each way there is to leave them.
class LeavePromptTest : public ScreenTest {
protected:
    void SetUp() override
    {
        markets.registry.bootstrapIfNeeded();
        markets.registry.createMarket(QStringLiteral("Annex"));
        addProduct(store.context(), {.name = QStringLiteral("Oil")});
        addProduct(store.context(), {.name = QStringLiteral("Soap")});
        signIn(UserRole::admin);
        view = &goTo<ProductsView>(QStringLiteral("Products"));
        view->selectRow(int(view->listedNames().indexOf(QStringLiteral("Soap"))));
        QLineEdit* name = view->form()->field(ProductEditForm::Field::name);
        name->selectAll();
        QTest::keyClicks(name, "Soap 250g");
    }

    MainNavigationView* navigation() const { return screen<MainNavigationView>(); }

    QMessageBox* question() const { return openBox(window.get()); }

    void answer(Answer chosen) const
    {
        QMessageBox* box = question();
        ASSERT_NE(box, nullptr);
        EXPECT_EQ(box->text(), "Save changes to Soap 250g?");
        clickButton(box, chosen == Answer::save      ? QStringLiteral("Save")
                         : chosen == Answer::discard ? QStringLiteral("Don't Save")
                                                     : QStringLiteral("Cancel"));
    }

    bool savedOnDisk() const { return dumpStoreFile(store.path()).contains(QStringLiteral("Soap 250g")); }

    ProductsView* view = nullptr;
};

class LeavePathTest;

// A way out, with the answers tried on it: every path once goes on and, where its own code holds
// the person back (the list, the sidebar, the window), once stays.
struct LeavePath {
    const char* name;
    std::vector<Answer> answers;
    std::function<void(LeavePathTest&)> leave;
    std::function<bool(LeavePathTest&)> hasLeft;
};

[[maybe_unused]] void PrintTo(const LeavePath& path, std::ostream* out)
{
    *out << path.name;
}

[[maybe_unused]] void PrintTo(Answer answer, std::ostream* out)
{
    *out << (answer == Answer::save ? "Save" : answer == Answer::discard ? "Don't Save" : "Cancel");
}

class LeavePathTest : public LeavePromptTest,
                      public ::testing::WithParamInterface<std::tuple<LeavePath, Answer>> {
public:
    // The test's protected members, for the table of paths.
    MainNavigationView* nav() const { return navigation(); }
    ProductsView* products() const { return view; }
    MainWindow* mainWindow() const { return window.get(); }
    SessionStore& sessionStore() { return session; }
    int relaunches() const { return relauncher.count; }
};

const LeavePath paths[] = {
    {"AnotherRow",
     {Answer::save, Answer::cancel},
     [](LeavePathTest& t) { t.products()->selectRow(int(t.products()->listedNames().indexOf("Oil"))); },
     [](LeavePathTest& t) {
         return t.products()->model().selectedProduct() &&
                t.products()->model().selectedProduct()->name() == "Oil";
     }},
    {"NewProduct",
     {Answer::discard},
     [](LeavePathTest& t) { t.products()->newProductButton()->click(); },
     [](LeavePathTest& t) { return t.products()->model().isNewProduct(); }},
    {"Sidebar",
     {Answer::save, Answer::cancel},
     [](LeavePathTest& t) {
         t.nav()->sidebar()->setCurrentItem(t.nav()->sidebar()->findItems("Suppliers", Qt::MatchExactly).value(0));
     },
     [](LeavePathTest& t) { return qobject_cast<SuppliersView*>(t.nav()->currentScreen()) != nullptr; }},
    {"RequestFromAScreen",
     {Answer::discard},
     [](LeavePathTest& t) { t.mainWindow()->actionBus().setRequestedSection(AppSection::customers); },
     [](LeavePathTest& t) { return t.nav()->model().selection() == AppSection::customers; }},
    {"SignOut",
     {Answer::save},
     [](LeavePathTest& t) { t.nav()->signOutButton()->click(); },
     [](LeavePathTest& t) { return t.sessionStore().currentUser() == nullptr; }},
    {"SwitchStore",
     {Answer::discard},
     [](LeavePathTest& t) {
         auto* commands = t.mainWindow()->findChild<MarketCommands*>();
         ASSERT_NE(commands, nullptr);
         Q_EMIT commands->switchStoreMenu()->aboutToShow();
         commands->switchStoreMenu()->actions().last()->trigger();
     },
     [](LeavePathTest& t) { return t.relaunches() == 1; }},
    {"CloseTheWindow",
     {Answer::save, Answer::cancel},
     [](LeavePathTest& t) { t.mainWindow()->close(); },
     [](LeavePathTest& t) { return !t.mainWindow()->isVisible(); }},
};

std::vector<std::tuple<LeavePath, Answer>> pathsAndAnswers()
{
    std::vector<std::tuple<LeavePath, Answer>> cases;
    for (const LeavePath& path : paths)
        for (Answer answer : path.answers)
            cases.emplace_back(path, answer);
    return cases;
}
} // namespace

TEST_P(LeavePathTest, AsksAndDoesWhatTheAnswerSays)
{
    const auto& [path, chosen] = GetParam();
    path.leave(*this);
    ASSERT_NE(question(), nullptr) << "left without asking";
    EXPECT_FALSE(path.hasLeft(*this)) << "nothing moves before the answer";
    answer(chosen);
    EXPECT_EQ(path.hasLeft(*this), chosen != Answer::cancel);
    EXPECT_EQ(savedOnDisk(), chosen == Answer::save);
    if (chosen == Answer::cancel) {
        ASSERT_NE(view->form(), nullptr);
        EXPECT_EQ(view->form()->field(ProductEditForm::Field::name)->text(), "Soap 250g");
        EXPECT_TRUE(view->model().hasUnsavedEdits());
        ASSERT_NE(view->list()->currentItem(), nullptr);
        EXPECT_EQ(view->list()->currentItem()->text(), "Soap 250g") << "the list stays on the edited row";
        EXPECT_EQ(navigation()->sidebar()->currentItem()->text(), "Products");
    }
}

INSTANTIATE_TEST_SUITE_P(EveryWayOut, LeavePathTest, ::testing::ValuesIn(pathsAndAnswers()),
                         [](const auto& info) {
                             const Answer chosen = std::get<1>(info.param);
                             return std::string(std::get<0>(info.param).name) +
                                    (chosen == Answer::save      ? "_Save"
                                     : chosen == Answer::discard ? "_DontSave"
                                                                 : "_Cancel");
                         });

TEST_F(LeavePromptTest, ASaveThatFailsKeepsThePersonOnTheFormWithTheReason)
{
    navigation()->signOutButton()->click();
    SqliteConnection::injectFault(1, SQLITE_FULL);
    answer(Answer::save);
    SqliteConnection::clearFault();
    EXPECT_NE(session.currentUser(), nullptr) << "still signed in";
    ASSERT_NE(view->form(), nullptr);
    EXPECT_TRUE(view->form()->errorLabel()->isVisible());
    EXPECT_TRUE(view->form()->errorLabel()->text().contains("The disk is full")) << view->form()->errorLabel()->text().toStdString();
    EXPECT_EQ(view->form()->field(ProductEditForm::Field::name)->text(), "Soap 250g");
    EXPECT_FALSE(savedOnDisk());

    // Once there is room again the same click goes through, without a restart.
    navigation()->signOutButton()->click();
    answer(Answer::save);
    EXPECT_EQ(session.currentUser(), nullptr);
    EXPECT_TRUE(savedOnDisk());
}
