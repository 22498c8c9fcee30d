#include "system/InfoDictionary.h"

#include "tests/support/TemporaryDirectory.h"

#include <gtest/gtest.h>

namespace stackreel
{

TEST(InfoDictionary, ReturnsTextsAndNoOtherValues)
{
    const TemporaryDirectory folder;
    const auto info = InfoDictionary::read(folder.write(
        "Info.json",
        R"({"text": "naïve", "empty": "", "number": 7, "none": null, "list": ["a"], "table": {"text": "b"}})"));
    EXPECT_EQ(info.text("text"), "naïve");
    EXPECT_EQ(info.text("empty"), "");
    for (const char* key : {"number", "none", "list", "table", "absent", "Text", ""})
        EXPECT_FALSE(info.text(key)) << key;
}

TEST(InfoDictionary, HasNoValuesWhenTheFileIsMissingOrBroken)
{
    const TemporaryDirectory folder;
    EXPECT_FALSE(InfoDictionary().text("a"));
    EXPECT_FALSE(InfoDictionary::read(folder / "absent").text("a"));
    EXPECT_FALSE(InfoDictionary::read(folder.path()).text("a"));
    for (const std::string content : {"", "nonsense", "null", R"("a")", R"([{"a": "b"}])", R"({"a": "b")",
                                      R"({"a": "b"} x)", "{\"a\": \"\xFF\"}"})
        EXPECT_FALSE(InfoDictionary::read(folder.write("Info.json", content)).text("a")) << content;
    EXPECT_FALSE(InfoDictionary::read(folder.write("Info.json", std::string(100'000, '['))).text("a"));
}

} // namespace stackreel
