// Random changes in random transactions, against plain values that are copied to be restored.
#include <algorithm>
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "library.h"

namespace tessel::core::testing {
namespace {

/// What the model should hold; elements are named by their index.
struct Mirror {
    struct PlainPerson {
        std::u16string name;
        std::int32_t age = 0;
    };
    struct PlainBook {
        int owner = -1;
        std::vector<int> authors;
        std::vector<std::int32_t> marks;
    };
    std::vector<PlainPerson> persons;
    std::vector<PlainBook> books;
    std::vector<int> shelved;
    std::vector<std::u16string> labels;
};

/// A model and its mirror, changed together.
class Twins {
  public:
    void change() {
        switch (*rc::gen::inRange(0, 12)) {
            case 0: {
                persons_.push_back(Person::create(model_));
                mirror_.persons.emplace_back();
                break;
            }
            case 1: {
                books_.push_back(Book::create(model_));
                mirror_.books.emplace_back();
                break;
            }
            case 2:
                if (const int i = any(persons_); i >= 0) {
                    mirror_.persons[at(i)].name = name();
                    persons_[at(i)]->setName(mirror_.persons[at(i)].name);
                }
                break;
            case 3:
                if (const int i = any(persons_); i >= 0) {
                    persons_[at(i)]->setAge(++mirror_.persons[at(i)].age);
                }
                break;
            case 4:
                shelf_->getBooksMutable().clear();
                mirror_.shelved.clear();
                break;
            case 5:
                if (const int i = any(books_); i >= 0) {
                    shelf_->getBooksMutable().push_back(books_[at(i)]);
                    mirror_.shelved.push_back(i);
                }
                break;
            case 6:
                mirror_.labels.push_back(name());
                shelf_->getLabelsMutable().push_back(mirror_.labels.back());
                break;
            default:
                if (const int i = any(books_); i >= 0) {
                    changeBook(*books_[at(i)].get(), mirror_.books[at(i)]);
                }
        }
    }

    void changeInTransaction() {
        const auto before = mirror_;
        {
            auto transaction = model_->beginTransaction();
            for (int left = *rc::gen::inRange(0, 20); left > 0; --left) {
                change();
            }
            check();
            if (*rc::gen::arbitrary<bool>()) {
                transaction.commit();
                return;
            }
        }
        mirror_ = before;
        persons_.resize(mirror_.persons.size());
        books_.resize(mirror_.books.size());
        check();
    }

    void check() const {
        const auto indices = [](const auto& all, const auto& sequence) {
            std::vector<int> result;
            for (const auto& element : sequence) {
                const auto found = std::find(all.begin(), all.end(), element);
                result.push_back(found == all.end() ? -1 : static_cast<int>(found - all.begin()));
            }
            return result;
        };
        for (std::size_t i = 0; i < persons_.size(); ++i) {
            RC_ASSERT(persons_[i]->getName() == mirror_.persons[i].name);
            RC_ASSERT(persons_[i]->getAge() == mirror_.persons[i].age);
            RC_ASSERT(!persons_[i]->isDetached());
        }
        for (std::size_t i = 0; i < books_.size(); ++i) {
            const auto& plain = mirror_.books[i];
            const auto& marks = books_[i]->getMarks();
            RC_ASSERT(std::vector<std::int32_t>(marks.begin(), marks.end()) == plain.marks);
            RC_ASSERT(indices(persons_, books_[i]->getAuthors()) == plain.authors);
            RC_ASSERT(books_[i]->getOwner() ==
                      (plain.owner < 0 ? Person() : persons_[at(plain.owner)]));
        }
        const auto& labels = shelf_->getLabels();
        RC_ASSERT(std::vector<std::u16string>(labels.begin(), labels.end()) == mirror_.labels);
        RC_ASSERT(indices(books_, shelf_->getBooks()) == mirror_.shelved);
    }

  private:
    static std::size_t at(int index) { return static_cast<std::size_t>(index); }

    template <class T>
    static int any(const std::vector<T>& elements) {
        return elements.empty() ? -1 : *rc::gen::inRange(0, static_cast<int>(elements.size()));
    }

    static std::u16string name() {
        return std::u16string(static_cast<std::size_t>(*rc::gen::inRange(0, 20)), u'x');
    }

    void changeBook(BookImpl& book, Mirror::PlainBook& plain) {
        const int person = any(persons_);
        switch (*rc::gen::inRange(0, 6)) {
            case 0:
                book.setOwner(person < 0 ? Person() : persons_[at(person)]);
                plain.owner = person;
                break;
            case 1:
                book.setOwner(Person());
                plain.owner = -1;
                break;
            case 2:
                if (person >= 0) {
                    book.getAuthorsMutable().push_back(persons_[at(person)]);
                    plain.authors.push_back(person);
                }
                break;
            case 3:
                book.getAuthorsMutable().clear();
                plain.authors.clear();
                break;
            case 4:
                plain.marks.push_back(*rc::gen::arbitrary<std::int32_t>());
                book.getMarksMutable().push_back(plain.marks.back());
                break;
            default:
                book.getMarksMutable().clear();
                book.getMarksMutable().reserve(at(*rc::gen::inRange(0, 20)));
                plain.marks.clear();
        }
    }

    Model model_ = Model::create({});
    Shelf shelf_ = committed(model_, [this] { return Shelf::create(model_); });
    std::vector<Person> persons_;
    std::vector<Book> books_;
    Mirror mirror_;
};

TEST(RandomHistory, agreesWithPlainValuesThatAreCopiedToBeRestored) {
    EXPECT_TRUE(rc::check([] {
        {
            Twins twins;
            for (int left = *rc::gen::inRange(1, 12); left > 0; --left) {
                twins.changeInTransaction();
            }
        }
        RC_ASSERT(Census::living == 0);
    }));
}

}  // namespace
}  // namespace tessel::core::testing
