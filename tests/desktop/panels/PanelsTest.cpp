#include "desktop/panels/qt/FileOpenPanel.h"
#include "desktop/panels/qt/FileSavePanel.h"
#include "desktop/panels/qt/PanelPaths.h"
#include "tests/support/Awaited.h"
#include "tests/support/ScopedEnvironment.h"
#include "tests/support/TemporaryDirectory.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileSystemModel>
#include <QLineEdit>
#include <QListView>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QWindow>

#include <gtest/gtest.h>

#include <fstream>

namespace stackreel
{

namespace
{

/// Shows the panels with the model's requests, in a temporary folder, and collects their responses.
class PanelsTest : public testing::Test
{
protected:
    PanelsTest() { m_folders->setOpenedFile(m_folder.path() / "clip.mov"); }

    void openPanel()
    {
        m_open->begin(
            {.title = "Choose a horizontal video",
             .prompt = "Choose Video",
             .allowedContentTypes = {ContentType::audiovisualContent, ContentType::movie, ContentType::data}},
            collect());
    }
    void savePanel(const std::string& defaultName = "clip-vertical.mp4")
    {
        m_save->begin({.title = "Export vertical video",
                       .prompt = "Export",
                       .defaultName = defaultName,
                       .canCreateDirectories = true,
                       .allowedContentTypes = {ContentType::mp4},
                       .source = m_folder.path() / "source.mp4"},
                      collect());
    }
    PanelCompletion collect()
    {
        return [this](const PanelResponse& response) {
            EXPECT_EQ(QThread::currentThread(), qApp->thread());
            m_responses.push_back(response);
        };
    }

    /// The visible dialog; null if there is none or more than one.
    static QFileDialog* dialog()
    {
        QFileDialog* found = nullptr;
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* candidate = qobject_cast<QFileDialog*>(widget);
            if (candidate == nullptr || !candidate->isVisible())
                continue;
            if (found != nullptr)
                return nullptr;
            found = candidate;
        }
        return found;
    }
    static void enter(const QString& name)
    {
        // Focus the field, as a user does, because the dialog then clears the selection in its list.
        dialog()->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(dialog()));
        auto* field = dialog()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        field->setFocus();
        field->setText(name);
        QCoreApplication::processEvents();
    }
    /// Selects a file in the dialog's list, which is filled asynchronously. Returns false if the file does
    /// not appear.
    static bool selectInList(const QString& name)
    {
        auto* list = dialog()->findChild<QListView*>(QStringLiteral("listView"));
        return eventually([&] {
            for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
                const QModelIndex index = list->model()->index(row, 0, list->rootIndex());
                if (index.data(QFileSystemModel::FileNameRole).toString() != name)
                    continue;
                list->setCurrentIndex(index);
                QCoreApplication::processEvents();
                return true;
            }
            return false;
        });
    }
    static QAbstractButton* confirmButton()
    {
        auto* buttons = dialog()->findChild<QDialogButtonBox*>();
        return buttons->button(dialog()->acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                                 : QDialogButtonBox::Open);
    }
    /// The message box in front of the dialog, such as the question whether to replace a file; null if there
    /// is none.
    static QMessageBox* question()
    {
        auto* box = dialog() != nullptr ? dialog()->findChild<QMessageBox*>() : nullptr;
        return box != nullptr && box->isVisible() ? box : nullptr;
    }
    static void answer(QMessageBox::ButtonRole role)
    {
        for (QAbstractButton* button : question()->buttons())
            if (question()->buttonRole(button) == role) {
                button->click();
                break;
            }
        QCoreApplication::processEvents();
    }

    std::filesystem::path makeFile(const std::string& name)
    {
        const auto file = m_folder.path() / name;
        std::ofstream(file) << "x";
        return file;
    }

    std::vector<PanelResponse> m_responses;
    TemporaryDirectory m_folder;
    std::shared_ptr<PanelFolders> m_folders = std::make_shared<PanelFolders>();
    std::unique_ptr<FileOpenPanel> m_open = std::make_unique<FileOpenPanel>(m_folders);
    std::unique_ptr<FileSavePanel> m_save = std::make_unique<FileSavePanel>(m_folders);
};

TEST_F(PanelsTest, TheOpenPanelHasItsTitleAndPrompt)
{
    openPanel();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), QStringLiteral("Choose a horizontal video"));
    EXPECT_EQ(confirmButton()->text(), QStringLiteral("Choose Video"));
    EXPECT_EQ(dialog()->fileMode(), QFileDialog::ExistingFile);
    EXPECT_FALSE(dialog()->isModal());
    EXPECT_TRUE(m_responses.empty());
}

TEST_F(PanelsTest, TheSavePanelHasItsTitlePromptAndName)
{
    savePanel("Beach day-vertical.mp4");
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), QStringLiteral("Export vertical video"));
    EXPECT_EQ(confirmButton()->text(), QStringLiteral("Export"));
    EXPECT_EQ(dialog()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->text(),
              QStringLiteral("Beach day-vertical.mp4"));
    EXPECT_EQ(dialog()->nameFilters(), QStringList(QStringLiteral("MPEG-4 videos (*.mp4)")));
    EXPECT_FALSE(dialog()->testOption(QFileDialog::ReadOnly));
    EXPECT_FALSE(dialog()->isModal());
}

TEST_F(PanelsTest, CompletesOnceWithTheChosenFile)
{
    const auto file = makeFile("clip.mov");
    openPanel();
    enter(QStringLiteral("clip.mov"));
    confirmButton()->click();
    ASSERT_TRUE(eventually([&] { return !m_responses.empty(); }));
    QCoreApplication::processEvents();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_TRUE(m_responses[0].accepted);
    EXPECT_EQ(m_responses[0].url, file);
    EXPECT_EQ(dialog(), nullptr);
}

TEST_F(PanelsTest, AcceptsAFileOfAnyType)
{
    const auto file = makeFile("notes.txt");
    openPanel();
    enter(QStringLiteral("notes.txt"));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_EQ(m_responses[0].url, file);
}

TEST_F(PanelsTest, CompletesOnceWithoutAFileWhenCancelled)
{
    openPanel();
    dialog()->reject();
    savePanel();
    dialog()->close();
    ASSERT_EQ(m_responses.size(), 2U);
    for (const PanelResponse& response : m_responses) {
        EXPECT_FALSE(response.accepted);
        EXPECT_EQ(response.url, std::nullopt);
    }
}

TEST_F(PanelsTest, ReturnsUnusualNamesAsTheyAreOnDisk)
{
    makeFile("best"); // Qt would open this file for the name My "best" day.mov
    for (const char* name : {"two  blanks.mov", "-leading.mov", "per%cent %1.mov", "quo\"te's.mov",
                             "My \"best\" day.mov", "Grüße – 東京.mov", "two..dots.mov"}) {
        const auto file = makeFile(name);
        openPanel();
        ASSERT_TRUE(selectInList(QString::fromUtf8(name))) << name;
        confirmButton()->click();
        ASSERT_EQ(m_responses.size(), 1U) << name;
        EXPECT_EQ(m_responses[0].url, file);
        m_responses.clear();
    }
}

TEST_F(PanelsTest, OpensUnusualNamesAsTheyWereEntered)
{
    makeFile("best"); // Qt would open this file for the names My "best" day.mov and "best"
    std::filesystem::create_directory(m_folder.path() / "12\" master");
    for (const char* name : {"two  blanks.mov", "-leading.mov", "quo\"te's.mov", "My \"best\" day.mov",
                             "\"best\"", "12\" master/clip.mov", "Grüße – 東京.mov"}) {
        const auto file = makeFile(name);
        openPanel();
        enter(QString::fromUtf8(name));
        confirmButton()->click();
        ASSERT_EQ(m_responses.size(), 1U) << name;
        EXPECT_EQ(m_responses[0].url, file);
        m_responses.clear();
        m_folders->setOpenedFile(m_folder / "clip.mov");
    }
}

TEST_F(PanelsTest, OpensANameWithQuotationMarksWhenReturnIsPressed)
{
    const auto file = makeFile("quo\"te's.mov");
    openPanel();
    enter(QStringLiteral("quo\"te's.mo"));
    QWidget* const field = dialog()->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    QTest::keyClicks(field, QStringLiteral("v"));
    QTest::keyClick(field, Qt::Key_Return);
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_EQ(m_responses[0].url, file);
}

TEST_F(PanelsTest, IgnoresQuotationMarksAroundANameThatHasNone)
{
    const auto file = makeFile("clip.mov");
    openPanel();
    enter(QStringLiteral("\"clip.mov\""));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_EQ(m_responses[0].url, file);
}

TEST_F(PanelsTest, SavesUnusualNamesAsTheyWereEntered)
{
    for (const char* name : {"two  blanks.mp4", "-leading.mp4", "per%cent %1.mp4",
                             "My \"best\" day-vertical.mp4", "it's.mp4", "Grüße – 東京.mp4", "..dots..mp4"}) {
        savePanel(name);
        confirmButton()->click();
        ASSERT_EQ(m_responses.size(), 1U) << name;
        EXPECT_EQ(m_responses[0].url, m_folder.path() / name);
        m_responses.clear();
    }
}

TEST_F(PanelsTest, AddsTheSuffixWhenASavedNameHasNone)
{
    const std::pair<const char*, const char*> rows[] = {
        {"film", "film.mp4"},         {"film.mov", "film.mov.mp4"}, {"film.mp4", "film.mp4"},
        {"FILM.MP4", "FILM.MP4"},     {"film.", "film..mp4"},       {"a.b c", "a.b c.mp4"},
        {"film mp4", "film mp4.mp4"},
    };
    for (const auto& [entered, expected] : rows) {
        savePanel();
        enter(QString::fromUtf8(entered));
        confirmButton()->click();
        ASSERT_EQ(m_responses.size(), 1U) << entered;
        EXPECT_EQ(m_responses[0].url, m_folder.path() / expected);
        m_responses.clear();
    }
}

TEST_F(PanelsTest, AsksBeforeReplacingTheFileWithItsSuffix)
{
    makeFile("film.mp4");
    savePanel();
    enter(QStringLiteral("film"));
    confirmButton()->click();
    ASSERT_NE(question(), nullptr);
    EXPECT_TRUE(m_responses.empty());
    EXPECT_EQ(question()->text(), QStringLiteral("“film.mp4” already exists. Do you want to replace it?"));
    answer(QMessageBox::AcceptRole);
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_TRUE(m_responses[0].accepted);
    EXPECT_EQ(m_responses[0].url, m_folder.path() / "film.mp4");
}

TEST_F(PanelsTest, StaysOpenWhenTheUserDoesNotReplaceTheFile)
{
    makeFile("film.mp4");
    savePanel("film.mp4");
    confirmButton()->click();
    ASSERT_NE(question(), nullptr);
    answer(QMessageBox::RejectRole);
    EXPECT_TRUE(m_responses.empty());
    ASSERT_NE(dialog(), nullptr);
    enter(QStringLiteral("other.mp4"));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_EQ(m_responses[0].url, m_folder.path() / "other.mp4");
}

TEST_F(PanelsTest, RejectsTheSourceUnderAnyNameInsteadOfOfferingToReplaceIt)
{
    makeFile("source.mp4");
    std::filesystem::create_symlink("source.mp4", m_folder.path() / "link.mp4");
    for (const char* name : {"source", "link.mp4"}) {
        savePanel();
        enter(QString::fromUtf8(name));
        confirmButton()->click();
        ASSERT_NE(question(), nullptr);
        EXPECT_TRUE(question()->text().endsWith(
            QStringLiteral("is the video that is exported. Choose another name.")))
            << question()->text().toStdString();
        answer(QMessageBox::AcceptRole);
        EXPECT_TRUE(m_responses.empty());
        dialog()->reject();
        m_responses.clear();
    }
}

TEST_F(PanelsTest, RejectsAFileThatCannotBeWrittenAndShowsTheReason)
{
    const std::pair<QString, QString> rows[] = {
        {QStringLiteral("missing/film.mp4"), QStringLiteral("The folder “%1/missing” does not exist.")
                                                 .arg(QString::fromStdString(m_folder.path()))},
        {QString(100, u'東'), QStringLiteral("The name is too long. Choose a shorter one.")},
        {QString(252, u'x'), QStringLiteral("The name is too long. Choose a shorter one.")},
    };
    for (const auto& [entered, reason] : rows) {
        savePanel();
        enter(entered);
        confirmButton()->click();
        ASSERT_NE(question(), nullptr) << entered.toStdString();
        EXPECT_EQ(question()->text(), reason);
        answer(QMessageBox::AcceptRole);
        EXPECT_TRUE(m_responses.empty());
        ASSERT_NE(dialog(), nullptr);
        enter(QStringLiteral("film"));
        confirmButton()->click();
        ASSERT_EQ(m_responses.size(), 1U);
        EXPECT_EQ(m_responses[0].url, m_folder.path() / "film.mp4");
        m_responses.clear();
    }
}

TEST_F(PanelsTest, OpensAFolderThatIsEnteredAsTheName)
{
    std::filesystem::create_directory(m_folder.path() / "inner");
    savePanel();
    enter(QStringLiteral("inner"));
    confirmButton()->click();
    EXPECT_TRUE(m_responses.empty());
    EXPECT_TRUE(eventually([] { return dialog()->directory().dirName() == QStringLiteral("inner"); }));
}

TEST_F(PanelsTest, TheSavePanelStartsInTheFolderOfTheOpenedFile)
{
    std::filesystem::create_directory(m_folder.path() / "inner");
    makeFile("inner/clip.mov");
    openPanel();
    enter(QStringLiteral("inner/clip.mov"));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    savePanel();
    EXPECT_EQ(dialog()->directory().dirName(), QStringLiteral("inner"));
}

TEST_F(PanelsTest, ASavedFileDoesNotChangeTheFoldersInWhichThePanelsStart)
{
    std::filesystem::create_directory(m_folder.path() / "out");
    makeFile("clip.mov");
    openPanel();
    enter(QStringLiteral("clip.mov"));
    confirmButton()->click();
    m_responses.clear();
    savePanel();
    enter(QStringLiteral("out/film.mp4"));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    const QDir besideTheSource(QString::fromStdString(m_folder.path().string()));
    savePanel();
    EXPECT_EQ(dialog()->directory(), besideTheSource);
    dialog()->reject();
    openPanel();
    EXPECT_EQ(dialog()->directory(), besideTheSource);
}

TEST_F(PanelsTest, TheOpenPanelStartsInTheVideosFolderAtFirstAndWhenItsFolderWasRemoved)
{
    const ScopedEnvironment home("HOME", m_folder.path().string());
    const ScopedEnvironment configuration("XDG_CONFIG_HOME", m_folder.path().string());
    std::filesystem::create_directory(m_folder / "Videos");
    for (const auto& folders : {PanelFolders(), PanelFolders(m_folder.write("open-folder", "/gone"))}) {
        *m_folders = folders;
        openPanel();
        EXPECT_EQ(PanelPaths::path(dialog()->directory().path()), m_folder / "Videos");
    }
}

TEST_F(PanelsTest, TheOpenPanelStartsInTheFolderOfTheLastRun)
{
    *m_folders = PanelFolders(m_folder / "open-folder");
    std::filesystem::create_directory(m_folder / "inner");
    const auto clip = makeFile("inner/clip.mov");
    openPanel();
    enter(PanelPaths::text(clip));
    confirmButton()->click();
    ASSERT_EQ(m_responses.size(), 1U);
    *m_folders = PanelFolders(m_folder / "open-folder");
    openPanel();
    EXPECT_EQ(PanelPaths::path(dialog()->directory().path()), m_folder / "inner");
}

TEST_F(PanelsTest, CancelsTheOpenDialogWhenBegunAgain)
{
    openPanel();
    openPanel();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_FALSE(m_responses[0].accepted);
    EXPECT_NE(dialog(), nullptr);
}

TEST_F(PanelsTest, IsTransientForTheWindowEvenWithoutFocus)
{
    QWindow window;
    window.setFlags(window.flags() | Qt::WindowDoesNotAcceptFocus);
    window.show();
    ASSERT_NE(QGuiApplication::focusWindow(), &window);
    openPanel();
    EXPECT_EQ(dialog()->windowHandle()->transientParent(), &window);
    openPanel();
    EXPECT_EQ(dialog()->windowHandle()->transientParent(), &window) << "not the previous panel";
}

TEST_F(PanelsTest, AllowsTheCompletionToBeginTheNextPanel)
{
    makeFile("clip.mov");
    m_open->begin({.title = "First", .prompt = "Choose", .allowedContentTypes = {}},
                  [this](const PanelResponse&) { openPanel(); });
    enter(QStringLiteral("clip.mov"));
    confirmButton()->click();
    ASSERT_NE(dialog(), nullptr);
    EXPECT_EQ(dialog()->windowTitle(), QStringLiteral("Choose a horizontal video"));
    EXPECT_TRUE(m_responses.empty());
}

TEST_F(PanelsTest, CancelsTheOpenDialogWhenDestroyed)
{
    openPanel();
    m_open.reset();
    ASSERT_EQ(m_responses.size(), 1U);
    EXPECT_FALSE(m_responses[0].accepted);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(dialog(), nullptr);
}

} // namespace

} // namespace stackreel
