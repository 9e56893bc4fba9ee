// Random changes in random transactions: what is committed stays, what is not never was.
#include <cstdint>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "library.h"

namespace tessel::core::testing {
namespace {

class History {
  public:
    void changeInTransaction() {
        const std::string before = content();
        const std::size_t persons = persons_.size();
        const std::size_t books = books_.size();
        {
            auto transaction = model_->beginTransaction();
            for (int left = *rc::gen::inRange(0, 20); left > 0; --left) {
                change();
            }
            if (*rc::gen::arbitrary<bool>()) {
                const std::string after = content();
                transaction.commit();
                RC_ASSERT(content() == after);
                return;
            }
        }
        persons_.resize(persons);
        books_.resize(books);
        RC_ASSERT(content() == before);
    }

  private:
    [[nodiscard]] std::string content() const {
        std::string all = text(shelf_);
        for (const auto& person : persons_) {
            all += "\n" + text(person) + (person->isDetached() ? " detached" : "");
        }
        for (const auto& book : books_) {
            all += "\n" + text(book) + (book->isDetached() ? " detached" : "");
        }
        return all;
    }

    template <class T>
    static T any(const std::vector<T>& elements) {
        return elements.empty() ? T()
                                : elements[*rc::gen::inRange<std::size_t>(0, elements.size())];
    }

    static std::u16string name() {
        return std::u16string(static_cast<std::size_t>(*rc::gen::inRange(0, 20)), u'x');
    }

    void change() {
        const int choice = *rc::gen::inRange(0, 14);
        const Person person = any(persons_);
        const Book book = any(books_);
        if (choice == 0 || !person) {
            persons_.push_back(createElement<Person>(model_));
        } else if (choice == 1 || !book) {
            books_.push_back(createElement<Book>(model_));
        } else if (choice == 2) {
            person->name.set(name());
        } else if (choice == 3) {
            person->age.set(person->age.get() + 1);
        } else if (choice == 4) {
            shelf_->books.clear();
        } else if (choice == 5) {
            shelf_->books.push_back(book);
        } else if (choice == 6) {
            shelf_->labels.push_back(name());
        } else if (choice == 7) {
            book->owner.set(person);
        } else if (choice == 8) {
            book->owner.set(Person());
        } else if (choice == 9) {
            book->authors.clear();
        } else if (choice == 10) {
            book->marks.clear();
            book->marks.reserve(static_cast<std::size_t>(*rc::gen::inRange(0, 20)));
        } else if (choice == 11) {
            book->marks.push_back(*rc::gen::arbitrary<std::int32_t>());
        } else {
            book->authors.push_back(person);
        }
    }

    Model model_ = Model::create({});
    Shelf shelf_ = committed(model_, [this] { return createElement<Shelf>(model_); });
    std::vector<Person> persons_;
    std::vector<Book> books_;
};

TEST(RandomHistory, keepsWhatIsCommittedAndRestoresWhatIsNot) {
    EXPECT_TRUE(rc::check([] {
        {
            History history;
            for (int left = *rc::gen::inRange(1, 12); left > 0; --left) {
                history.changeInTransaction();
            }
        }
        RC_ASSERT(Census::living == 0);
    }));
}

}  // namespace
}  // namespace tessel::core::testing
