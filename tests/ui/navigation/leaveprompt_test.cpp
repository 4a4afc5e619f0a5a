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

namespace {
enum class Answer { save, discard, cancel };
const char* const answerTitles[] = {"Save", "Don't Save", "Cancel"};
const char* const answerNames[] = {"Save", "DontSave", "Cancel"};

class LeavePathTest;

// A way out of unsaved edits, with the answers tried on it: every path once goes on and, where
// its own code holds the person back (the list, the sidebar, the window), once stays.
struct LeavePath {
    const char* name;
    std::vector<Answer> answers;
    std::function<void(LeavePathTest&)> leave;
    std::function<bool(LeavePathTest&)> hasLeft;
};

// Unsaved edits on the Products form.
class LeavePathTest : public ScreenTest, public ::testing::WithParamInterface<std::tuple<LeavePath, Answer>> {
public:
    void SetUp() override
    {
        markets.registry.bootstrapIfNeeded();
        markets.registry.createMarket(QStringLiteral("Annex"));
        addProduct(store.context(), {.name = QStringLiteral("Oil")});
        addProduct(store.context(), {.name = QStringLiteral("Soap")});
        signIn(UserRole::admin);
        view = &goTo<ProductsView>(QStringLiteral("Products"));
        view->selectRow(1);
        QLineEdit* name = view->form()->field(ProductEditForm::Field::name);
        name->selectAll();
        QTest::keyClicks(name, "Soap 250g");
    }

    MainNavigationView* nav() const { return screen<MainNavigationView>(); }
    Ref<Product> chosen() const { return view->model().selectedProduct(); }

    using WindowTest::relauncher;
    using WindowTest::session;
    using WindowTest::window;
    ProductsView* view = nullptr;
};

const LeavePath paths[] = {
    {"AnotherRow", {Answer::save, Answer::cancel}, [](LeavePathTest& t) { t.view->selectRow(0); },
     [](LeavePathTest& t) { return t.chosen() && t.chosen()->name() == "Oil"; }},
    {"NewProduct", {Answer::discard}, [](LeavePathTest& t) { t.view->newProductButton()->click(); },
     [](LeavePathTest& t) { return t.view->model().isNewProduct(); }},
    {"Sidebar", {Answer::save, Answer::cancel},
     [](LeavePathTest& t) {
         t.nav()->sidebar()->setCurrentItem(t.nav()->sidebar()->findItems("Suppliers", Qt::MatchExactly).value(0));
     },
     [](LeavePathTest& t) { return qobject_cast<SuppliersView*>(t.nav()->currentScreen()) != nullptr; }},
    {"RequestFromAScreen", {Answer::discard},
     [](LeavePathTest& t) { t.window->actionBus().setRequestedSection(AppSection::customers); },
     [](LeavePathTest& t) { return t.nav()->model().selection() == AppSection::customers; }},
    {"SignOut", {Answer::save}, [](LeavePathTest& t) { t.nav()->signOutButton()->click(); },
     [](LeavePathTest& t) { return t.session.currentUser() == nullptr; }},
    {"SwitchStore", {Answer::discard},
     [](LeavePathTest& t) {
         auto* commands = t.window->findChild<MarketCommands*>();
         ASSERT_NE(commands, nullptr);
         Q_EMIT commands->switchStoreMenu()->aboutToShow();
         commands->switchStoreMenu()->actions().last()->trigger();
     },
     [](LeavePathTest& t) { return t.relauncher.count == 1; }},
    {"CloseTheWindow", {Answer::save, Answer::cancel}, [](LeavePathTest& t) { t.window->close(); },
     [](LeavePathTest& t) { return !t.window->isVisible(); }},
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
    QMessageBox* box = openBox(window.get());
    ASSERT_NE(box, nullptr) << "left without asking";
    EXPECT_EQ(box->text(), "Save changes to Soap 250g?");
    EXPECT_FALSE(path.hasLeft(*this)) << "nothing moves before the answer";
    clickButton(box, answerTitles[int(chosen)]);
    EXPECT_EQ(path.hasLeft(*this), chosen != Answer::cancel);
    EXPECT_EQ(dumpStoreFile(store.path()).contains(QStringLiteral("Soap 250g")), chosen == Answer::save);
    if (chosen == Answer::cancel) {
        EXPECT_EQ(view->form()->field(ProductEditForm::Field::name)->text(), "Soap 250g");
        EXPECT_EQ(view->list()->currentIndex().data().toString(), "Soap 250g")
            << "the list stays on the edited row";
        EXPECT_EQ(nav()->sidebar()->currentItem()->text(), "Products");
    }
}

INSTANTIATE_TEST_SUITE_P(EveryWayOut, LeavePathTest, ::testing::ValuesIn(pathsAndAnswers()), [](const auto& info) {
    return std::string(std::get<0>(info.param).name) + "_" + answerNames[int(std::get<1>(info.param))];
});
