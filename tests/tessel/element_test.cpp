#include <tessel/core/element.h>

#include <set>
#include <string>
#include <unordered_set>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <tessel/core/errors.h>
#include <boost/exception/diagnostic_information.hpp>
#include <boost/functional/hash.hpp>

#include "library.h"

namespace tessel::core::testing {
namespace {

using ::testing::HasSubstr;

TEST(Element, everyOneHasAUuidOfItsOwnThatStays) {
    const auto first = Model::create({});
    const auto second = Model::create({});
    std::set<boost::uuids::uuid> seen;
    std::vector<Person> persons;
    for (const auto& model : {first, second}) {
        auto transaction = model->beginTransaction();
        for (int i = 0; i < 1000; ++i) {
            persons.push_back(Person::create(model));
            seen.insert(persons.back()->getUuid());
        }
        transaction.commit();
    }
    EXPECT_EQ(seen.size(), 2000U);
    for (const auto& person : persons) {
        EXPECT_TRUE(seen.contains(person->getUuid()));
        EXPECT_FALSE(person->getUuid().is_nil());
    }
}

TEST(Element, livesAsLongAsItsHandlesAndKeepsItsModelAlive) {
    ASSERT_EQ(Census::living, 0);
    auto model = Model::create({});
    auto book = committed(model, [&] { return makeBook(model); });
    EXPECT_EQ(Census::living, 5);
    const auto author = book->getAuthors()[1];
    model = Model();
    EXPECT_EQ(book->getModel(), author->getModel());
    {
        auto transaction = book->getModel()->beginTransaction();
        book->getAuthorsMutable().clear();
        EXPECT_EQ(Census::living, 5) << "what is cleared may come back";
        transaction.commit();
    }
    EXPECT_EQ(Census::living, 3);
    book = Book();
    EXPECT_EQ(Census::living, 1);
    EXPECT_EQ(text(author), "Cid 50");
    EXPECT_TRUE(author->getModel());
}

class NodeImpl;

class Node : public Handle<NodeImpl> {
  public:
    using Handle::Handle;
};

class NodeImpl : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    Property<Node> next{*this};

  private:
    Census census_;
};

TEST(Element, cycleOfReferencesEndsWhenOneIsCleared) {
    const auto model = Model::create({});
    {
        auto transaction = model->beginTransaction();
        const auto first = createElement<Node>(model);
        first->next.set(createElement<Node>(model));
        first->next.get()->next.set(first);
        transaction.commit();
        transaction = model->beginTransaction();
        first->next.set(Node());
        EXPECT_EQ(Census::living, 2);
        transaction.commit();
    }
    EXPECT_EQ(Census::living, 0);
}

TEST(Handle, comparesAndHashesTheObjectThatItHolds) {
    const auto model = Model::create({});
    const auto [ada, other] = committed(model, [&] {
        return std::pair(makePerson(model, u"Ada", 36), makePerson(model, u"Ada", 36));
    });
    const Person same = ada;
    const Element upcast = ada;
    EXPECT_EQ(ada, same);
    EXPECT_EQ(Element(ada), upcast);
    EXPECT_NE(ada, other);
    EXPECT_NE(ada, Person());
    EXPECT_FALSE(Person());
    EXPECT_EQ((std::unordered_set<Person>{ada, same, other, Person()}.size()), 3U);
    EXPECT_EQ(boost::hash<Person>()(ada), boost::hash<Person>()(same));
}

TEST(Handle, movesWithoutCounting) {
    const auto model = Model::create({});
    auto ada = committed(model, [&] { return makePerson(model, u"Ada", 36); });
    const Person moved = std::move(ada);
    EXPECT_FALSE(ada);  // NOLINT(bugprone-use-after-move): null is promised by what it is made of
    EXPECT_EQ(text(moved), "Ada 36");
    EXPECT_EQ(Census::living, 1);
}

TEST(Cast, givesTheSameElementForItsTypeAndNullForNull) {
    const auto model = Model::create({});
    const auto ada = committed(model, [&] { return makePerson(model, u"Ada", 36); });
    const Element element = ada;
    EXPECT_EQ(cast<Person>(element), ada);
    EXPECT_EQ(cast<Element>(ada), element);
    EXPECT_EQ(&cast<PersonImpl>(*element), ada.get());
    EXPECT_FALSE(cast<Person>(Element()));
}

TEST(Cast, toAnotherTypeIsRefusedAndNamesBoth) {
    const auto model = Model::create({});
    const Element element = committed(model, [&] { return makePerson(model, u"Ada", 36); });
    EXPECT_THROW((void)cast<BookImpl>(*element), CannotCastIncompatibleTypes);
    try {
        (void)cast<Book>(element);
        FAIL();
    } catch (const boost::exception& exception) {
        const auto& error = dynamic_cast<const CannotCastIncompatibleTypes&>(exception);
        EXPECT_STREQ(error.what(),
                     "cannot cast a tessel::core::testing::PersonImpl "
                     "to a tessel::core::testing::BookImpl");
        EXPECT_THAT(boost::diagnostic_information(exception), HasSubstr(error.what()));
    }
}

}  // namespace
}  // namespace tessel::core::testing
