#include "ui/BackgroundExportList.h"

#include "model/AppModel.h"
#include "tests/support/fakes/FakeServices.h"

#include <QAbstractItemModelTester>
#include <QCoreApplication>
#include <QSignalSpy>

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

class BackgroundExportListTest : public testing::Test
{
protected:
    BackgroundExportListTest() { load(); }

    void load()
    {
        m_model.chooseSource();
        m_fakes.openPanel->choose("/clips/a.mov");
        settle();
        m_fakes.inspections.back().task().complete(landscapeClip(20));
        m_fakes.previews.back().task().complete("/clips/a.mov");
        settle();
    }
    /// Starts an export and replaces its source.
    void startExport(const std::filesystem::path& file)
    {
        m_model.chooseExportDestination();
        m_fakes.savePanel->choose(file);
        settle();
        load();
    }
    static void settle()
    {
        for (int round = 0; round < 3; ++round)
            QCoreApplication::sendPostedEvents();
    }
    QString fileName(int row) const
    {
        return m_list.data(m_list.index(row), m_list.roleNames().key("fileName")).toString();
    }

    FakeServices m_fakes;
    AppModel m_model{m_fakes.services()};
    BackgroundExportList m_list{m_model};
    QAbstractItemModelTester m_tester{&m_list, QAbstractItemModelTester::FailureReportingMode::Fatal};
    QSignalSpy m_inserted{&m_list, &QAbstractItemModel::rowsInserted};
    QSignalSpy m_removed{&m_list, &QAbstractItemModel::rowsRemoved};
    QSignalSpy m_reset{&m_list, &QAbstractItemModel::modelReset};
};

} // namespace

TEST_F(BackgroundExportListTest, ChangesOnlyTheRowOfAnExportThatBeginsOrEnds)
{
    startExport("/clips/a.mp4");
    startExport("/clips/Möwe.mp4");
    EXPECT_EQ(m_list.rowCount(), 2);
    EXPECT_EQ(fileName(0), QStringLiteral("a.mp4"));
    EXPECT_EQ(fileName(1), QStringLiteral("Möwe.mp4"));
    EXPECT_EQ(m_inserted.count(), 2);
    EXPECT_EQ(m_removed.count(), 0);
    m_fakes.exports.back().task().complete("/clips/a.mp4");
    settle();
    EXPECT_EQ(m_list.rowCount(), 1);
    EXPECT_EQ(fileName(0), QStringLiteral("Möwe.mp4"));
    EXPECT_EQ(m_inserted.count(), 2);
    EXPECT_EQ(m_removed.count(), 1);
    EXPECT_EQ(m_reset.count(), 0);
}

TEST_F(BackgroundExportListTest, CancelsTheExportOfARow)
{
    startExport("/clips/a.mp4");
    m_list.cancel(-1);
    m_list.cancel(1);
    EXPECT_FALSE(m_fakes.exports.back().isCancelled());
    m_list.cancel(0);
    EXPECT_TRUE(m_fakes.exports.back().isCancelled());
    EXPECT_EQ(m_list.rowCount(), 1) << "it has not ended";
}

} // namespace stackreel
