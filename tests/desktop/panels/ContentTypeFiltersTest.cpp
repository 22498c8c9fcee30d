#include "desktop/panels/qt/ContentTypeFilters.h"

#include <gtest/gtest.h>

namespace stackreel
{

namespace
{

const std::vector<ContentType> sourceTypes = {ContentType::audiovisualContent, ContentType::movie,
                                              ContentType::data};

TEST(ContentTypeFiltersTest, OffersTypesInTheirOrder)
{
    const QStringList names = ContentTypeFilters::names(sourceTypes);
    ASSERT_EQ(names.size(), 3);
    EXPECT_TRUE(names[0].startsWith(QStringLiteral("Video and audio (")));
    EXPECT_TRUE(names[1].startsWith(QStringLiteral("Videos (")));
    EXPECT_EQ(names[2], QStringLiteral("All files (*)"));
}

TEST(ContentTypeFiltersTest, StartsWithAllFilesWhenAnyDataIsAllowed)
{
    EXPECT_EQ(ContentTypeFilters::initial(sourceTypes), QStringLiteral("All files (*)"));
}

TEST(ContentTypeFiltersTest, OffersAllFilesWithoutTypes)
{
    EXPECT_EQ(ContentTypeFilters::names({}), QStringList(QStringLiteral("All files (*)")));
    EXPECT_EQ(ContentTypeFilters::initial({}), QStringLiteral("All files (*)"));
}

TEST(ContentTypeFiltersTest, OffersOnlyTheTypeWhenThereIsOne)
{
    EXPECT_EQ(ContentTypeFilters::initial({ContentType::mp4}), QStringLiteral("MPEG-4 videos (*.mp4)"));
}

TEST(ContentTypeFiltersTest, RequiresASuffixOnlyForASingleType)
{
    EXPECT_EQ(ContentTypeFilters::requiredSuffix({ContentType::mp4}), QStringLiteral("mp4"));
    EXPECT_EQ(ContentTypeFilters::requiredSuffix({ContentType::mp4, ContentType::data}), std::nullopt);
    EXPECT_EQ(ContentTypeFilters::requiredSuffix({ContentType::data}), std::nullopt);
    EXPECT_EQ(ContentTypeFilters::requiredSuffix({}), std::nullopt);
}

} // namespace

} // namespace stackreel
