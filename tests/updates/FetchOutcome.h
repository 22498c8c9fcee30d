#pragma once

#include "tests/support/Awaited.h"
#include "updates/FeedFetcher.h"

#include <gtest/gtest.h>

namespace stackreel
{

/// The result of a fetch: either the document, or the sentence for the user and the kind of failure.
struct FetchOutcome {
    QByteArray document;
    QString sentence;
    std::optional<FeedFailure> failure;
};

/// Fetches an address and waits until the fetch has ended. Expects exactly one signal.
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
                     [&](const QString& sentence, FeedFailure failure) {
                         outcome.sentence = sentence;
                         outcome.failure = failure;
                         ++signalCount;
                     });
    fetcher.fetch(url);
    EXPECT_EQ(signalCount, 0);
    EXPECT_TRUE(eventually([&] { return signalCount > 0; }));
    EXPECT_FALSE(fetcher.isFetching());
    runPendingEvents();
    EXPECT_EQ(signalCount, 1);
    return outcome;
}

inline FetchOutcome fetch(const QUrl& url, FeedLimits limits = {})
{
    FeedFetcher fetcher(limits);
    return fetch(fetcher, url);
}

} // namespace stackreel
