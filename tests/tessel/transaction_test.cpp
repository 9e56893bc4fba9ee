// What transactions allow, refuse and leave behind; what they restore, random histories show.
#include <tessel/core/transaction.h>

#include <functional>
#include <optional>
#include <unordered_set>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tessel/core/errors.h>
#include <boost/functional/hash.hpp>

#include "../support/faults.h"
#include "library.h"

namespace tessel::core::testing {
namespace {

using testing_faults::allocations;

constexpr const char* madeBook = "of Ada 36 by [Bob 40, Cid 50, Dan 60, ] marked [1, 2, ]";

TEST(Transaction, withoutItEveryWriteIsRefusedAndChangesNothing) {
    const auto model = Model::create({});
    const auto book = committed(model, [&] { return makeBook(model); });
    const std::pair<const char*, std::function<void()>> writes[] = {
        {"creation", [&] { makePerson(model, u"Eve", 20); }},
        {"value", [&] { book->owner.get()->age.set(1); }},
        {"reference", [&] { book->owner.set(Person()); }},
        {"append", [&] { book->authors.push_back(book->owner.get()); }},
        {"clear", [&] { book->marks.clear(); }},
        {"reserve", [&] { book->marks.reserve(10); }},
    };
    for (const auto& [name, write] : writes) {
        EXPECT_THROW(write(), NoTransaction) << name;
        EXPECT_EQ(text(book), madeBook) << name;
    }
    EXPECT_EQ(Census::living, 5);
}

TEST(Transaction, isOpenOncePerModelUntilItsEndAndRolledBackByAnAssignment) {
    const auto first = Model::create({});
    const auto second = Model::create({});
    const auto ada = committed(first, [&] { return makePerson(first, u"Ada", 36); });
    const auto bob = committed(second, [&] { return makePerson(second, u"Bob", 40); });
    auto target = first->beginTransaction();
    ada->age.set(1);
    EXPECT_THROW((void)first->beginTransaction(), TransactionOpen);
    auto source = second->beginTransaction();
    bob->age.set(2);
    target = std::move(source);
    EXPECT_FALSE(first->isInTransaction());
    EXPECT_EQ(text(ada), "Ada 36");
    // NOLINTNEXTLINE(bugprone-use-after-move,clang-analyzer-cplusplus.Move)
    EXPECT_THROW(source.commit(), TransactionEnded);
    auto& itself = target;
    target = std::move(itself);
    EXPECT_TRUE(second->isInTransaction());
    target.commit();
    EXPECT_THROW(target.commit(), TransactionEnded);
    EXPECT_FALSE(second->isInTransaction());
    EXPECT_EQ(text(bob), "Bob 2");
}

TEST(Transaction, outlivesTheHandlesOfItsModelAndElements) {
    std::optional<Transaction> transaction;
    {
        const auto model = Model::create({});
        const auto book = committed(model, [&] { return makeBook(model); });
        transaction = model->beginTransaction();
        book->owner.set(makePerson(model, u"Eve", 20));
        book->authors.clear();
    }
    EXPECT_EQ(Census::living, 6) << "the old content may come back into the changed book";
    transaction.reset();
    EXPECT_EQ(Census::living, 0);
}

TEST(Transaction, refusesWhatIsDetachedOrOfAnotherModel) {
    const auto model = Model::create({});
    const auto other = Model::create({});
    const auto book = committed(model, [&] { return makeBook(model); });
    const auto stranger = committed(other, [&] { return makePerson(other, u"Eve", 20); });
    const auto detached = [&] {
        const auto transaction = model->beginTransaction();
        auto made = makeBook(model);
        EXPECT_FALSE(made->isDetached());
        return made;
    }();
    EXPECT_TRUE(detached->isDetached());
    EXPECT_THROW(detached->owner.set(Person()), DetachedElement);

    auto transaction = model->beginTransaction();
    EXPECT_THROW(detached->marks.push_back(3), DetachedElement);
    EXPECT_THROW(detached->marks.clear(), DetachedElement);
    EXPECT_THROW(book->owner.set(detached->owner.get()), DetachedElement);
    EXPECT_THROW(book->authors.push_back(detached->owner.get()), DetachedElement);
    EXPECT_THROW(book->owner.set(stranger), ForeignElement);
    EXPECT_THROW(book->authors.push_back(stranger), ForeignElement);
    transaction.commit();
    EXPECT_EQ(text(detached), madeBook);
    EXPECT_EQ(text(book), madeBook);
}

TEST(Transaction, needsMemoryForTheFirstWriteToAnOlderElementOnlyAndMovesWhatIsCleared) {
    const auto model = Model::create({});
    const auto shelf = committed(model, [&] {
        auto made = createElement<Shelf>(model);
        for (int i = 0; i < 1000; ++i) {
            made->labels.push_back(u"a label of a length beyond short");
        }
        made->books.push_back(makeBook(model));
        return made;
    });
    const auto* const first = shelf->labels.begin();
    const auto spent = [](auto write) {
        const auto before = allocations();
        write();
        return allocations() - before;
    };
    const auto grow = [](const Person& person) { person->age.set(person->age.get() + 1); };
    const auto old = shelf->books[0]->owner.get();
    {
        const auto transaction = model->beginTransaction();
        const auto fresh = makePerson(model, u"Eve", 20);
        EXPECT_EQ(spent([&] { grow(fresh); }), 0U);
        EXPECT_EQ(spent([&] { grow(old); }), 1U);
        EXPECT_EQ(spent([&] { grow(old); }), 0U);
        EXPECT_EQ(spent([&] { shelf->labels.clear(); }), 1U);
    }
    EXPECT_EQ(shelf->labels.begin(), first);
}

TEST(Element, livesAsLongAsItsHandlesAndKeepsItsModelAlive) {
    auto model = Model::create({});
    auto book = committed(model, [&] { return makeBook(model); });
    const auto author = book->authors[1];
    model = Model();
    book = Book();
    EXPECT_EQ(Census::living, 1);
    EXPECT_EQ(text(author), "Cid 50");
    EXPECT_TRUE(author->getModel());
}

TEST(Handle, comparesHashesAndCastsTheObjectThatItHolds) {
    const auto model = Model::create({});
    const auto [ada, other] = committed(model, [&] {
        return std::pair(makePerson(model, u"Ada", 36), makePerson(model, u"Ada", 36));
    });
    const Element element = ada;
    EXPECT_EQ((std::unordered_set<Person>{ada, Person(ada), other, Person()}.size()), 3U);
    EXPECT_EQ(boost::hash<Person>()(ada), boost::hash<Person>()(Person(ada)));
    EXPECT_EQ(cast<Person>(element), ada);
    EXPECT_FALSE(cast<Person>(Element()));
    EXPECT_THAT([&] { (void)cast<Book>(element); },
                ::testing::ThrowsMessage<CannotCastIncompatibleTypes>(
                    "cannot cast a tessel::core::testing::PersonImpl "
                    "to a tessel::core::testing::BookImpl"));
}

}  // namespace
}  // namespace tessel::core::testing
