#include "desktop/accessibility/AccessibleLineEdit.h"

#include <QAccessible>
#include <QDialog>
#include <QLabel>
#include <QLineEdit>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

/// A text field with a label in a dialog, as the panels have it, and the accessible interface of the field.
class AccessibleLineEditTest : public testing::Test
{
protected:
    AccessibleLineEditTest()
    {
        QAccessible::setActive(true);
        installAccessibleLineEdits();
        m_label.setBuddy(&m_edit);
        m_edit.setText(QStringLiteral("/tmp/Beach day.mp4"));
        m_interface = QAccessible::queryAccessibleInterface(&m_edit);
        m_text = m_interface->textInterface();
    }

    QString at(int offset, QAccessible::TextBoundaryType boundary)
    {
        return m_text->textAtOffset(offset, boundary, &m_start, &m_end);
    }

    QDialog m_dialog;
    QLabel m_label{QStringLiteral("File &name:"), &m_dialog};
    QLineEdit m_edit{&m_dialog};
    QAccessibleInterface* m_interface = nullptr;
    QAccessibleTextInterface* m_text = nullptr;
    int m_start = -1;
    int m_end = -1;
};

TEST_F(AccessibleLineEditTest, ReturnsNoWordOrSentenceAtTheEnd)
{
    // Qt 6.4's own implementation would loop forever here.
    for (const auto boundary :
         {QAccessible::WordBoundary, QAccessible::SentenceBoundary, QAccessible::CharBoundary}) {
        EXPECT_EQ(at(18, boundary), QString());
        EXPECT_EQ(m_start, 18);
        EXPECT_EQ(m_end, 18);
    }
}

TEST_F(AccessibleLineEditTest, ReturnsWordsCharactersAndTheLine)
{
    EXPECT_EQ(at(6, QAccessible::WordBoundary), QStringLiteral("Beach"));
    EXPECT_EQ(at(1, QAccessible::CharBoundary), QStringLiteral("t"));
    for (const int offset : {0, 7, 18, -1})
        EXPECT_EQ(at(offset, QAccessible::LineBoundary), m_edit.text());
    m_edit.clear();
    EXPECT_EQ(at(0, QAccessible::WordBoundary), QString());
    EXPECT_EQ(at(0, QAccessible::LineBoundary), QString());
}

TEST_F(AccessibleLineEditTest, ReturnsAndChangesTheSelection)
{
    EXPECT_EQ(m_text->selectionCount(), 0);
    m_text->addSelection(5, 10);
    EXPECT_EQ(m_edit.selectedText(), QStringLiteral("Beach"));
    ASSERT_EQ(m_text->selectionCount(), 1);
    m_text->selection(0, &m_start, &m_end);
    EXPECT_EQ(m_text->text(m_start, m_end), QStringLiteral("Beach"));
    m_text->removeSelection(0);
    EXPECT_FALSE(m_edit.hasSelectedText());
    m_text->setCursorPosition(3);
    EXPECT_EQ(m_text->cursorPosition(), 3);
    EXPECT_EQ(m_edit.cursorPosition(), 3);
}

TEST_F(AccessibleLineEditTest, EditsTheText)
{
    QAccessibleEditableTextInterface* const editable = m_interface->editableTextInterface();
    ASSERT_NE(editable, nullptr);
    editable->replaceText(5, 10, QStringLiteral("Lake"));
    EXPECT_EQ(m_edit.text(), QStringLiteral("/tmp/Lake day.mp4"));
    editable->deleteText(0, 5);
    editable->insertText(0, QStringLiteral("/"));
    EXPECT_EQ(m_edit.text(), QStringLiteral("/Lake day.mp4"));
    m_interface->setText(QAccessible::Value, QStringLiteral("new"));
    EXPECT_EQ(m_interface->text(QAccessible::Value), QStringLiteral("new"));
}

TEST_F(AccessibleLineEditTest, HasTheNameOfItsLabel)
{
    EXPECT_EQ(m_interface->role(), QAccessible::EditableText);
    EXPECT_EQ(m_interface->text(QAccessible::Name), QStringLiteral("File name:"));
    EXPECT_TRUE(m_interface->state().editable);
    EXPECT_TRUE(m_interface->state().focusable);
    m_edit.setReadOnly(true);
    EXPECT_TRUE(m_interface->state().readOnly);
}

TEST_F(AccessibleLineEditTest, HidesThePasswordOfAPasswordField)
{
    QLineEdit hidden(&m_dialog);
    hidden.setEchoMode(QLineEdit::Password);
    hidden.setText(QStringLiteral("secret"));
    QAccessibleTextInterface* const text = QAccessible::queryAccessibleInterface(&hidden)->textInterface();
    EXPECT_FALSE(text->text(0, 6).contains(QStringLiteral("secret")));
}

} // namespace

} // namespace stackreel
