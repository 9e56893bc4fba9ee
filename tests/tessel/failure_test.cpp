// Memory that runs out at every place of a large change.
#include <cstddef>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "../support/failing_allocations.h"
#include "library.h"

namespace tessel::core::testing {
namespace {

using testing_allocations::FailingAllocation;

constexpr const char16_t* longName = u"a name that is too long to stay within its string";

/// Rebuilds the shelf in the way of tables, then changes what was there before.
void rebuild(const Model& model, const Shelf& shelf, const Book& book) {
    auto transaction = model->beginTransaction();
    shelf->books.clear();
    for (int i = 0; i < 5; ++i) {
        const auto made = createElement<Book>(model);
        for (int k = 0; k < 3; ++k) {
            made->authors.push_back(makePerson(model, longName, k));
        }
        for (int k = 0; k < 6; ++k) {
            made->marks.push_back(k);
        }
        shelf->books.push_back(made);
    }
    book->owner.get()->name.set(longName + 1);
    book->authors.push_back(book->owner.get());
    book->marks.push_back(3);
    book->marks.reserve(100);
    book->owner.set(Person());
    shelf->labels.push_back(longName);
    transaction.commit();
}

TEST(Failure, ofAnyAllocationLeavesThePriorContentWhole) {
    std::size_t failures = 0;
    for (bool failed = true; failed; ++failures) {
        const auto model = Model::create({});
        const auto shelf = committed(model, [&] {
            auto made = createElement<Shelf>(model);
            made->books.push_back(makeBook(model));
            made->books.push_back(makeBook(model));
            made->labels.push_back(u"novels");
            return made;
        });
        const auto book = shelf->books[0];
        const auto before = text(shelf) + text(book);
        const int living = Census::living;
        {
            const FailingAllocation failing(failures);
            try {
                rebuild(model, shelf, book);
            } catch (const std::bad_alloc&) {
            }
            failed = failing.happened();
        }
        SCOPED_TRACE(failures);
        if (failed) {
            ASSERT_EQ(text(shelf) + text(book), before);
            ASSERT_EQ(Census::living, living);
        }
        ASSERT_FALSE(model->isInTransaction());
        ASSERT_EQ(shelf->books.size(), failed ? 2U : 5U);
    }
    EXPECT_GT(failures, 50U);
    EXPECT_EQ(Census::living, 0);
}

/// One write whose allocations fail in a transaction that goes on and is committed.
TEST(Failure, ofOneWriteLeavesTheRestOfTheTransactionWhole) {
    for (std::size_t successes = 0; successes < 4; ++successes) {
        const auto model = Model::create({});
        const auto book = committed(model, [&] { return makeBook(model); });
        const auto write = [&](auto change) {
            const FailingAllocation failing(successes);
            try {
                change();
            } catch (const std::bad_alloc&) {
                return false;
            }
            return true;
        };
        auto transaction = model->beginTransaction();
        const bool cleared = write([&] { book->authors.clear(); });
        EXPECT_EQ(book->authors.size(), cleared ? 0U : 3U);
        const bool appended = write([&] { book->marks.push_back(3); });
        EXPECT_EQ(book->marks.size(), appended ? 3U : 2U);
        const bool replaced = write([&] { book->owner.set(Person()); });
        EXPECT_EQ(text(book->owner.get()), replaced ? "nobody" : "Ada 36");
        const auto after = text(book);
        transaction.commit();
        EXPECT_EQ(text(book), after);
        EXPECT_EQ(cleared, successes > 0);
    }
}

}  // namespace
}  // namespace tessel::core::testing
