// Memory that runs out at every place of a large change.
#include <cstddef>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "failing_allocations.h"
#include "library.h"

namespace tessel::core::testing {
namespace {

constexpr const char16_t* longName = u"a name that is too long to stay within its string";

/// Rebuilds the shelf in the way of tables, then changes what was there before.
void rebuild(const Model& model, const Shelf& shelf, const Book& book) {
    auto transaction = model->beginTransaction();
    shelf->getBooksMutable().clear();
    for (int i = 0; i < 5; ++i) {
        const auto made = Book::create(model);
        for (int k = 0; k < 3; ++k) {
            made->getAuthorsMutable().push_back(makePerson(model, longName, k));
        }
        for (int k = 0; k < 6; ++k) {
            made->getMarksMutable().push_back(k);
        }
        shelf->getBooksMutable().push_back(made);
    }
    book->getOwner()->setName(longName + 1);
    book->getAuthorsMutable().push_back(book->getOwner());
    book->getMarksMutable().push_back(3);
    book->getMarksMutable().reserve(100);
    book->setOwner(Person());
    shelf->getLabelsMutable().push_back(longName);
    transaction.commit();
}

TEST(Failure, ofAnyAllocationLeavesThePriorContentWhole) {
    std::size_t failures = 0;
    for (bool failed = true; failed; ++failures) {
        const auto model = Model::create({});
        const auto shelf = committed(model, [&] {
            auto made = Shelf::create(model);
            made->getBooksMutable().push_back(makeBook(model));
            made->getBooksMutable().push_back(makeBook(model));
            made->getLabelsMutable().push_back(u"novels");
            return made;
        });
        const auto book = shelf->getBooks()[0];
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
        ASSERT_EQ(shelf->getBooks().size(), failed ? 2U : 5U);
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
        const bool cleared = write([&] { book->getAuthorsMutable().clear(); });
        EXPECT_EQ(book->getAuthors().size(), cleared ? 0U : 3U);
        const bool appended = write([&] { book->getMarksMutable().push_back(3); });
        EXPECT_EQ(book->getMarks().size(), appended ? 3U : 2U);
        const bool replaced = write([&] { book->setOwner(Person()); });
        EXPECT_EQ(text(book->getOwner()), replaced ? "nobody" : "Ada 36");
        const auto after = text(book);
        transaction.commit();
        EXPECT_EQ(text(book), after);
        EXPECT_EQ(cleared, successes > 0);
    }
}

}  // namespace
}  // namespace tessel::core::testing
