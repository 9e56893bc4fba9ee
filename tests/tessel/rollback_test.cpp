// What a transaction that ends uncommitted leaves: everything as it was.
#include <string>

#include <gtest/gtest.h>
#include <tessel/core/errors.h>

#include "failing_allocations.h"
#include "library.h"

namespace tessel::core::testing {
namespace {

/// A committed shelf of two books, with its first book and that one's owner.
struct World {
    Model model = Model::create({});
    Shelf shelf = committed(model, [this] {
        auto made = Shelf::create(model);
        made->getLabelsMutable().push_back(u"novels");
        made->getLocksMutable().push_back(true);
        made->getBooksMutable().push_back(makeBook(model));
        made->getBooksMutable().push_back(makeBook(model));
        return made;
    });
    Book book = shelf->getBooks()[0];
    Person ada = book->getOwner();
};

struct Change {
    const char* name;
    void (*apply)(const World&);
};

constexpr Change changes[] = {
    {"value", [](const World& w) { w.ada->setAge(37); }},
    {"text", [](const World& w) { w.ada->setName(u"Augusta Ada, Countess of Lovelace"); }},
    {"value twice", [](const World& w) { w.ada->setAge(1), w.ada->setAge(2); }},
    {"reference to a new element",
     [](const World& w) { w.book->setOwner(makePerson(w.model, u"Eve", 20)); }},
    {"reference to an old element",
     [](const World& w) { w.book->setOwner(w.book->getAuthors()[0]); }},
    {"reference to none", [](const World& w) { w.book->setOwner(Person()); }},
    {"append within the element", [](const World& w) { w.book->getMarksMutable().push_back(3); }},
    {"append beyond the element",
     [](const World& w) {
         for (int i = 0; i < 100; ++i) {
             w.book->getMarksMutable().push_back(i);
         }
     }},
    {"append what it holds",
     [](const World& w) {
         w.book->getAuthorsMutable().push_back(w.book->getAuthors()[0]);
         w.shelf->getLabelsMutable().push_back(w.shelf->getLabels()[0]);
     }},
    {"append a flag", [](const World& w) { w.shelf->getLocksMutable().push_back(false); }},
    {"clear within the element", [](const World& w) { w.book->getMarksMutable().clear(); }},
    {"clear beyond the element", [](const World& w) { w.book->getAuthorsMutable().clear(); }},
    {"append, then clear",
     [](const World& w) {
         w.book->getAuthorsMutable().push_back(w.ada);
         w.book->getAuthorsMutable().clear();
     }},
    {"clear, reserve, then append",
     [](const World& w) {
         w.book->getAuthorsMutable().clear();
         w.book->getAuthorsMutable().reserve(10);
         w.book->getAuthorsMutable().push_back(makePerson(w.model, u"Eve", 20));
     }},
    {"new element, changed again",
     [](const World& w) {
         const auto made = makeBook(w.model);
         w.shelf->getBooksMutable().push_back(made);
         made->getMarksMutable().clear();
         made->setOwner(w.ada);
     }},
    {"clear a container and change what it held",
     [](const World& w) {
         w.shelf->getBooksMutable().clear();
         w.ada->setAge(37);
         w.book->getMarksMutable().push_back(3);
         w.book->setOwner(Person());
         w.shelf->getBooksMutable().push_back(w.book);
     }},
};

TEST(Rollback, undoesEveryKindOfChangeThatCommitKeeps) {
    const auto everything = [](const World& world) {
        for (const auto& change : changes) {
            change.apply(world);
        }
    };
    const auto check = [](const char* name, const auto& apply) {
        SCOPED_TRACE(name);
        const World world;
        const auto before = text(world.shelf);
        const int living = Census::living;
        {
            const auto transaction = world.model->beginTransaction();
            apply(world);
            EXPECT_NE(text(world.shelf), before);
        }
        EXPECT_EQ(text(world.shelf), before);
        EXPECT_EQ(Census::living, living);

        auto transaction = world.model->beginTransaction();
        apply(world);
        const auto after = text(world.shelf);
        transaction.commit();
        EXPECT_EQ(text(world.shelf), after);
        EXPECT_NE(after, before);
    };
    for (const auto& [name, apply] : changes) {
        check(name, apply);
    }
    check("everything", everything);
    EXPECT_EQ(Census::living, 0);
}

TEST(Rollback, afterACommitRestoresWhatWasCommittedLast) {
    for (const auto& [name, apply] : changes) {
        SCOPED_TRACE(name);
        const World world;
        auto transaction = world.model->beginTransaction();
        apply(world);
        transaction.commit();
        const auto committedLast = text(world.shelf);
        transaction = world.model->beginTransaction();
        for (const auto& other : changes) {
            if (world.book->getOwner() && !world.book->getAuthors().empty()) {
                other.apply(world);
            }
        }
        transaction = Model::create({})->beginTransaction();
        EXPECT_EQ(text(world.shelf), committedLast);
    }
}

TEST(Rollback, happensWhenAnExceptionLeavesTheChange) {
    const World world;
    const auto before = text(world.shelf);
    const auto failing = [&] {
        const auto transaction = world.model->beginTransaction();
        world.shelf->getBooksMutable().clear();
        for (int i = 0; i < 1000; ++i) {
            world.shelf->getBooksMutable().push_back(makeBook(world.model));
        }
        throw std::runtime_error("in the middle");
    };
    EXPECT_THROW(failing(), std::runtime_error);
    EXPECT_EQ(text(world.shelf), before);
}

TEST(Rollback, detachesWhatWasCreated) {
    const World world;
    Book detached;
    {
        const auto transaction = world.model->beginTransaction();
        detached = makeBook(world.model);
        detached->setOwner(world.ada);
        world.shelf->getBooksMutable().push_back(detached);
        EXPECT_FALSE(detached->isDetached());
    }
    const auto written = "of Ada 36 by [Bob 40, Cid 50, Dan 60, ] marked [1, 2, ]";
    EXPECT_TRUE(detached->isDetached());
    EXPECT_EQ(text(detached), written);
    EXPECT_THROW(detached->setOwner(Person()), DetachedElement);

    auto transaction = world.model->beginTransaction();
    EXPECT_THROW(detached->setOwner(Person()), DetachedElement);
    EXPECT_THROW(detached->getMarksMutable().push_back(3), DetachedElement);
    EXPECT_THROW(detached->getMarksMutable().clear(), DetachedElement);
    EXPECT_THROW(world.shelf->getBooksMutable().push_back(detached), DetachedElement);
    EXPECT_THROW(world.book->setOwner(detached->getAuthors()[0]), DetachedElement);
    transaction.commit();
    EXPECT_EQ(text(detached), written);
    EXPECT_FALSE(world.ada->isDetached());
    EXPECT_EQ(detached->getModel(), world.model);
}

TEST(Rollback, ofAClearedSequenceCostsNoCopy) {
    const auto model = Model::create({});
    const auto shelf = committed(model, [&] {
        auto made = Shelf::create(model);
        for (int i = 0; i < 1000; ++i) {
            made->getLabelsMutable().push_back(u"a label of a length beyond short");
        }
        return made;
    });
    const auto* const first = shelf->getLabels().begin();
    std::size_t spent = allocations();
    {
        const auto transaction = model->beginTransaction();
        shelf->getLabelsMutable().clear();
    }
    spent = allocations() - spent;
    EXPECT_EQ(shelf->getLabels().begin(), first);
    EXPECT_EQ(shelf->getLabels().size(), 1000U);
    EXPECT_LE(spent, 3U);
}

TEST(Rollback, needsMemoryForTheFirstWriteToAnOlderElementOnly) {
    const World world;
    const auto transaction = world.model->beginTransaction();
    const auto fresh = makePerson(world.model, u"Eve", 20);
    const auto spent = [](const Person& person) {
        const auto before = allocations();
        person->setAge(person->getAge() + 1);
        return allocations() - before;
    };
    EXPECT_EQ(spent(fresh), 0U);
    EXPECT_EQ(spent(world.ada), 1U);
    EXPECT_EQ(spent(world.ada), 0U);
}

}  // namespace
}  // namespace tessel::core::testing
