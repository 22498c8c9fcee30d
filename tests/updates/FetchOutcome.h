#pragma once

#include "platform/updates/FeedFetcher.h"
#include "tests/support/Awaited.h"

#include <gtest/gtest.h>

namespace stackreel
{

/// How one fetch ended: the document, or the sentence and the trouble.
struct FetchOutcome {
    QByteArray document;
    QString sentence;
    std::optional<FeedTrouble> trouble;
};

/// Fetches an address to the end, which has to come exactly once.
inline FetchOutcome fetch(FeedFetcher& fetcher, const QUrl& url)
{
    FetchOutcome outcome;
    int signalCount = 0;
    QObject context;
    QObject::connect(&fetcher, &FeedFetcher::received, &context, [&](const QByteArray& document) {
        outcome.document = document;
        ++signalCount;
    });
    QObject::connect(&fetcher, &FeedFetcher::failed, &context,
                     [&](const QString& sentence, FeedTrouble trouble) {
                         outcome.sentence = sentence;
                         outcome.trouble = trouble;
                         ++signalCount;
                     });
    fetcher.fetch(url);
    EXPECT_EQ(signalCount, 0);
    EXPECT_TRUE(eventually([&] { return signalCount > 0; }));
    EXPECT_FALSE(fetcher.isFetching());
    eventually([] { return false; }, std::chrono::milliseconds(20));
    EXPECT_EQ(signalCount, 1);
    return outcome;
}

inline FetchOutcome fetch(const QUrl& url, FeedLimits limits = {})
{
    FeedFetcher fetcher(limits);
    return fetch(fetcher, url);
}

} // namespace stackreel
