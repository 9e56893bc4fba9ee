#include <tessel/core/transaction.h>

#include <functional>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

#include <gtest/gtest.h>
#include <tessel/core/errors.h>

#include "library.h"

namespace tessel::core::testing {
namespace {

static_assert(!std::is_copy_constructible_v<Transaction> &&
              !std::is_copy_assignable_v<Transaction> &&
              std::is_nothrow_move_constructible_v<Transaction> &&
              std::is_nothrow_move_assignable_v<Transaction>);

TEST(Transaction, withoutItEveryWriteIsRefusedAndChangesNothing) {
    const auto model = Model::create({});
    const auto shelf = committed(model, [&] {
        auto made = Shelf::create(model);
        made->getBooksMutable().push_back(makeBook(model));
        return made;
    });
    const auto book = shelf->getBooks()[0];
    const auto before = text(shelf);
    const std::pair<const char*, std::function<void()>> writes[] = {
        {"creation", [&] { makePerson(model, u"Eve", 20); }},
        {"value", [&] { book->getOwner()->setAge(1); }},
        {"text", [&] { book->getOwner()->setName(u"Eve"); }},
        {"reference", [&] { book->setOwner(Person()); }},
        {"append", [&] { book->getMarksMutable().push_back(3); }},
        {"append an element", [&] { book->getAuthorsMutable().push_back(book->getOwner()); }},
        {"clear", [&] { shelf->getBooksMutable().clear(); }},
        {"clear the empty", [&] { shelf->getLabelsMutable().clear(); }},
        {"reserve", [&] { shelf->getLabelsMutable().reserve(10); }},
    };
    for (const auto& [name, write] : writes) {
        EXPECT_THROW(write(), NoTransaction) << name;
        EXPECT_EQ(text(shelf), before) << name;
    }
    EXPECT_EQ(Census::living, 6);
}

TEST(Transaction, doesNestInAnotherModelOnly) {
    const auto model = Model::create({});
    const auto other = Model::create({});
    auto transaction = model->beginTransaction();
    const auto ada = makePerson(model, u"Ada", 36);
    EXPECT_THROW((void)model->beginTransaction(), TransactionOpen);
    EXPECT_NO_THROW(other->beginTransaction().commit());
    ada->setAge(37);
    transaction.commit();
    EXPECT_EQ(text(ada), "Ada 37");
    EXPECT_NO_THROW((void)model->beginTransaction());
}

TEST(Transaction, isOpenFromBeginningToEnd) {
    const auto model = Model::create({});
    EXPECT_FALSE(model->isInTransaction());
    {
        auto committed = model->beginTransaction();
        EXPECT_TRUE(model->isInTransaction());
        committed.commit();
        EXPECT_FALSE(model->isInTransaction());
        const auto abandoned = model->beginTransaction();
        EXPECT_TRUE(model->isInTransaction());
    }
    EXPECT_FALSE(model->isInTransaction());
}

TEST(Transaction, commitOfAnEndedOneIsRefused) {
    const auto model = Model::create({});
    auto transaction = model->beginTransaction();
    auto moved = std::move(transaction);
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_THROW(transaction.commit(), TransactionEnded);
    EXPECT_TRUE(model->isInTransaction());
    moved.commit();
    EXPECT_THROW(moved.commit(), TransactionEnded);
}

TEST(Transaction, movesWithItsChanges) {
    const auto model = Model::create({});
    const auto ada = committed(model, [&] { return makePerson(model, u"Ada", 36); });
    {
        std::optional<Transaction> outer;
        {
            auto inner = model->beginTransaction();
            ada->setAge(37);
            outer = std::move(inner);
        }
        EXPECT_EQ(ada->getAge(), 37) << "the end of a moved-from one rolls nothing back";
        ada->setName(u"Eve");
    }
    EXPECT_EQ(text(ada), "Ada 36");
}

TEST(Transaction, assignmentRollsBackWhatWasOpenInTheTarget) {
    const auto first = Model::create({});
    const auto second = Model::create({});
    const auto ada = committed(first, [&] { return makePerson(first, u"Ada", 36); });
    const auto bob = committed(second, [&] { return makePerson(second, u"Bob", 40); });
    auto target = first->beginTransaction();
    ada->setAge(1);
    auto source = second->beginTransaction();
    bob->setAge(2);
    target = std::move(source);
    EXPECT_FALSE(first->isInTransaction());
    EXPECT_EQ(text(ada), "Ada 36");
    auto& itself = target;
    target = std::move(itself);
    target.commit();
    EXPECT_EQ(text(bob), "Bob 2");
}

TEST(Transaction, outlivesTheHandlesOfItsModelAndElements) {
    std::optional<Transaction> transaction;
    {
        const auto model = Model::create({});
        const auto book = committed(model, [&] { return makeBook(model); });
        transaction = model->beginTransaction();
        book->setOwner(makePerson(model, u"Eve", 20));
        book->getAuthorsMutable().clear();
    }
    EXPECT_EQ(Census::living, 6) << "the old content may come back into the changed book";
    transaction.reset();
    EXPECT_EQ(Census::living, 0);
}

TEST(Transaction, keepsTheModelUsableWhateverHowManyEndedHow) {
    const auto model = Model::create({});
    const auto book = committed(model, [&] { return makeBook(model); });
    for (int i = 0; i < 100; ++i) {
        auto transaction = model->beginTransaction();
        book->getMarksMutable().clear();
        book->getMarksMutable().push_back(i);
        book->setOwner(makePerson(model, u"Eve", i));
        if (i % 3 == 0) {
            transaction.commit();
        }
    }
    EXPECT_EQ(text(book), "of Eve 99 by [Bob 40, Cid 50, Dan 60, ] marked [99, ]");
    EXPECT_EQ(Census::living, 5);
}

TEST(References, toAnotherModelAreRefused) {
    const auto model = Model::create({});
    const auto other = Model::create({});
    const auto book = committed(model, [&] { return makeBook(model); });
    const auto stranger = committed(other, [&] { return makePerson(other, u"Eve", 20); });
    const auto before = text(book);
    auto transaction = model->beginTransaction();
    EXPECT_THROW(book->setOwner(stranger), ForeignElement);
    EXPECT_THROW(book->getAuthorsMutable().push_back(stranger), ForeignElement);
    transaction.commit();
    EXPECT_EQ(text(book), before);
}

}  // namespace
}  // namespace tessel::core::testing
