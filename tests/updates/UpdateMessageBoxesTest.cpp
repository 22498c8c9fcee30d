#include "platform/updates/UpdateMessageBoxes.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTextEdit>

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

    /// The one box that is open, or null.
    static QMessageBox* box()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QMessageBox* found = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets())
            if (auto* message = qobject_cast<QMessageBox*>(widget)) {
                EXPECT_EQ(found, nullptr);
                found = message;
            }
        return found;
    }

    static QAbstractButton* button(const QString& text)
    {
        for (QAbstractButton* candidate : box()->buttons())
            if (candidate->text() == text)
                return candidate;
        return nullptr;
    }

    QList<QUrl> opened;
    UpdateMessageBoxes messages{[this](const QUrl& url) { opened.append(url); }};
};

} // namespace

TEST_F(UpdateMessageBoxesTest, ShowsAnUpdateWithItsNotesAndHoldsNothingUp)
{
    messages.showUpdate(release(), QStringLiteral("0.1.0"));
    ASSERT_NE(box(), nullptr);
    EXPECT_TRUE(box()->isVisible());
    EXPECT_FALSE(box()->isModal());
    EXPECT_EQ(box()->text(), QStringLiteral("Stackreel 0.2.0 is available. You have 0.1.0."));
    EXPECT_EQ(box()->informativeText(), QStringLiteral("New."));
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdateMessageBoxesTest, OpensTheDownloadPageOnlyWhenAskedTo)
{
    messages.showUpdate(release(), QStringLiteral("0.1.0"));
    button(QStringLiteral("Later"))->click();
    EXPECT_EQ(box(), nullptr);
    EXPECT_TRUE(opened.isEmpty());
    messages.showUpdate(release(), QStringLiteral("0.1.0"));
    button(QStringLiteral("Open Download Page"))->click();
    EXPECT_EQ(box(), nullptr);
    EXPECT_EQ(opened, QList<QUrl>({QUrl(QStringLiteral("https://example.org/d?a=1"))}));
}

TEST_F(UpdateMessageBoxesTest, ClosesForEscapeWithoutOpeningAnything)
{
    messages.showUpdate(release(), QStringLiteral("0.1.0"));
    box()->reject();
    EXPECT_EQ(box(), nullptr);
    EXPECT_TRUE(opened.isEmpty());
}

TEST_F(UpdateMessageBoxesTest, ShowsMarkupInNotesAsItIsWritten)
{
    messages.showUpdate(release(hostileNotes), QStringLiteral("0.1.0"));
    EXPECT_EQ(box()->informativeText(), QString::fromStdString(hostileNotes));
    int labels = 0;
    for (const QLabel* label : box()->findChildren<QLabel*>()) {
        if (label->text().isEmpty())
            continue;
        EXPECT_EQ(label->textFormat(), Qt::PlainText) << label->text().toStdString();
        ++labels;
    }
    EXPECT_EQ(labels, 2);
}

TEST_F(UpdateMessageBoxesTest, ShowsLongNotesInItsScrollingPartAsTheyAreWritten)
{
    for (const std::string& notes : {hostileNotes + std::string(5000, 'x'), "<b>" + std::string(20, '\n')}) {
        messages.showUpdate(release(notes), QStringLiteral("0.1.0"));
        const auto* text = box()->findChild<QTextEdit*>();
        ASSERT_NE(text, nullptr);
        EXPECT_EQ(text->toPlainText(), QString::fromStdString(notes));
        EXPECT_TRUE(box()->informativeText().isEmpty());
    }
}

TEST_F(UpdateMessageBoxesTest, KeepsOneBoxForAllMessages)
{
    messages.showTrouble(QStringLiteral("<b>Trouble.</b>"));
    EXPECT_EQ(box()->text(), QStringLiteral("<b>Trouble.</b>"));
    EXPECT_EQ(box()->textFormat(), Qt::PlainText);
    messages.showUpToDate(QStringLiteral("0.1.0"));
    EXPECT_EQ(box()->text(), QStringLiteral("Stackreel 0.1.0 is the newest version."));
    EXPECT_TRUE(box()->isVisible());
}

TEST_F(UpdateMessageBoxesTest, TakesItsBoxAlongWhenItGoes)
{
    {
        UpdateMessageBoxes others([](const QUrl&) {});
        others.showTrouble(QStringLiteral("Trouble."));
        EXPECT_NE(box(), nullptr);
    }
    EXPECT_EQ(box(), nullptr);
}

} // namespace stackreel

int main(int count, char** words)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    testing::InitGoogleTest(&count, words);
    const QApplication application(count, words);
    return RUN_ALL_TESTS();
}
