#include "updates/UpdateMessageBoxes.h"

#include "tests/support/ProcessEnd.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const std::string hostileNotes =
    "<h1>News</h1> <img src='http://127.0.0.1/x'> <a href='file:///'>&amp;</a>\n%1 %n";

class UpdateMessageBoxesTest : public testing::Test
{
protected:
    static UpdateRelease release(const std::string& notes = "New.")
    {
        return {.version = {},
                .versionText = "0.2.0",
                .notes = notes,
                .downloadPage = "https://example.org/d?a=1"};
    }

    void showUpdate(const std::string& notes = "New.", bool userRequested = true)
    {
        messages.showUpdate(release(notes), QStringLiteral("0.1.0"), userRequested);
    }

    /// The open box, or null. Expects at most one.
    static QDialog* box()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QDialog* found = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* message = qobject_cast<QDialog*>(widget)) {
                EXPECT_EQ(found, nullptr);
                found = message;
            }
        return found;
    }
    static QString sentence() { return box()->findChild<QLabel*>()->text(); }
    /// The visible text of the notes or the address.
    static QString text()
    {
        const auto* edit = box()->findChild<QPlainTextEdit*>();
        return edit ? edit->toPlainText() : QString();
    }
    static QPushButton* button(const QString& name)
    {
        for (QPushButton* candidate : box()->findChildren<QPushButton*>())
            if (candidate->text() == name)
                return candidate;
        return nullptr;
    }

    QList<QUrl> opened;
    bool hasBrowser = true;
    UpdateMessageBoxes messages{[this](const QUrl& url) {
        opened.append(url);
        return hasBrowser;
    }};
    const QString openName = QStringLiteral("Open Download Page");
    const QString laterName = QStringLiteral("Later");
};

} // namespace

TEST_F(UpdateMessageBoxesTest, ShowsAnUpdateWithItsNotesWithoutBlocking)
{
    showUpdate();
    ASSERT_NE(box(), nullptr);
    EXPECT_TRUE(box()->isVisible());
    EXPECT_FALSE(box()->isModal());
    EXPECT_EQ(sentence(), QStringLiteral("Stackreel 0.2.0 is available. You have 0.1.0."));
    EXPECT_EQ(text(), QStringLiteral("New."));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdateMessageBoxesTest, OpensTheDownloadPageOnlyWhenItsButtonIsClicked)
{
    showUpdate();
    button(laterName)->click();
    EXPECT_EQ(box(), nullptr);
    EXPECT_TRUE(opened.isEmpty());
    showUpdate();
    button(openName)->click();
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(opened, QList<QUrl>({QUrl(QStringLiteral("https://example.org/d?a=1"))}));
}

TEST_F(UpdateMessageBoxesTest, ClosesWithoutOpeningThePageWhenEscapeIsPressed)
{
    showUpdate();
    QTest::keyClick(box(), Qt::Key_Escape);
    EXPECT_EQ(box(), nullptr);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdateMessageBoxesTest, OpensThePageOnReturnWhenTheUserRequestedTheCheck)
{
    showUpdate();
    EXPECT_FALSE(box()->testAttribute(Qt::WA_ShowWithoutActivating));
    QTest::keyClick(box(), Qt::Key_Return);
    EXPECT_EQ(opened.size(), 1);
}

TEST_F(UpdateMessageBoxesTest, OpensNoPageOnAConfirmingKeyAfterABackgroundCheck)
{
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
        showUpdate("New.", false);
        EXPECT_TRUE(box()->testAttribute(Qt::WA_ShowWithoutActivating));
        QTest::keyClick(box()->focusWidget(), key);
        EXPECT_EQ(box(), nullptr) << key;
    }
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdateMessageBoxesTest, ShowsTheAddressWhenNoBrowserOpens)
{
    hasBrowser = false;
    showUpdate();
    button(openName)->click();
    ASSERT_NE(box(), nullptr);
    EXPECT_TRUE(sentence().startsWith(QStringLiteral("Stackreel found no browser")))
        << sentence().toStdString();
    EXPECT_EQ(text(), QStringLiteral("https://example.org/d?a=1"));
    EXPECT_TRUE(box()->findChild<QPlainTextEdit*>()->textInteractionFlags() & Qt::TextSelectableByKeyboard);
    button(QStringLiteral("OK"))->click();
    EXPECT_EQ(box(), nullptr);
}

TEST_F(UpdateMessageBoxesTest, ShowsMarkupAsItIsWritten)
{
    for (const std::string& notes : {hostileNotes, hostileNotes + std::string(5000, 'x')}) {
        showUpdate(notes);
        EXPECT_EQ(text(), QString::fromStdString(notes));
    }
    messages.showError(QStringLiteral("<b>Error.</b>"));
    EXPECT_EQ(box()->findChild<QLabel*>()->textFormat(), Qt::PlainText);
}

TEST_F(UpdateMessageBoxesTest, KeepsItsSizeForLongNotesAndLongWords)
{
    showUpdate();
    const QSize usual = box()->size();
    for (const std::string& notes :
         {std::string(600, 'w'), std::string(250'000, 'w'), std::string(5000, '\n'), std::string("New.")}) {
        showUpdate(notes);
        const auto* edit = box()->findChild<QPlainTextEdit*>();
        EXPECT_EQ(box()->width(), usual.width()) << notes.size();
        EXPECT_LT(box()->height(), usual.height() + 400) << notes.size();
        EXPECT_EQ(edit->horizontalScrollBar()->maximum(), 0) << notes.size();
    }
}

TEST_F(UpdateMessageBoxesTest, ShowsNoTextWhenTheNotesAreEmpty)
{
    showUpdate("");
    EXPECT_EQ(box()->findChild<QPlainTextEdit*>(), nullptr);
}

TEST_F(UpdateMessageBoxesTest, KeepsOneBoxForAllMessages)
{
    messages.showError(QStringLiteral("<b>Error.</b>"));
    EXPECT_EQ(sentence(), QStringLiteral("<b>Error.</b>"));
    messages.showUpToDate(QStringLiteral("0.1.0"));
    EXPECT_EQ(sentence(), QStringLiteral("Stackreel 0.1.0 is the newest version."));
    EXPECT_TRUE(box()->isVisible());
}

TEST_F(UpdateMessageBoxesTest, ClosesItsBoxWhenDestroyed)
{
    {
        UpdateMessageBoxes others([](const QUrl&) { return true; });
        others.showError(QStringLiteral("Error."));
        EXPECT_NE(box(), nullptr);
    }
    EXPECT_EQ(box(), nullptr);
}

} // namespace stackreel

namespace
{

int runTests(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&argc, argv);
    if (testing::GTEST_FLAG(list_tests))
        return RUN_ALL_TESTS();
    const QApplication application(argc, argv);
    return RUN_ALL_TESTS();
}

} // namespace

int main(int argc, char** argv)
{
    stackreel::endProcess(runTests(argc, argv));
}
