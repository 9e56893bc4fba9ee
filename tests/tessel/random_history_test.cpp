// Random changes, some of which run out of memory, in random transactions: what is committed stays,
// what is not never was.
#include <cstdint>
#include <functional>
#include <iterator>
#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "../support/faults.h"
#include "library.h"

namespace tessel::core::testing {
namespace {

using testing_faults::Failing;
using testing_faults::Kind;

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

    void change() {
        const Person person = any(persons_);
        const Book book = any(books_);
        if (!person || !book || *rc::gen::inRange(0, 7) == 0) {
            persons_.push_back(createElement<Person>(model_));
            books_.push_back(createElement<Book>(model_));
            return;
        }
        const auto number = *rc::gen::inRange(0, 20);
        const std::u16string name(static_cast<std::size_t>(number), u'x');
        const std::function<void()> changes[] = {
            [&] { createElement<Book>(model_)->authors.push_back(person); },
            [&] { person->name.set(name); },
            [&] { person->age.set(number); },
            [&] { shelf_->books.clear(); },
            [&] { shelf_->books.push_back(book); },
            [&] { shelf_->labels.push_back(name); },
            [&] { book->owner.set(person); },
            [&] { book->owner.set(Person()); },
            [&] { book->authors.clear(); },
            [&] { book->authors.push_back(person); },
            [&] { book->marks.push_back(number); },
            [&] { book->marks.clear(); },
            [&] { book->marks.reserve(static_cast<std::size_t>(number)); },
        };
        const auto& chosen = changes[*rc::gen::inRange<std::size_t>(0, std::size(changes))];
        const auto successes = *rc::gen::inRange<std::size_t>(0, 6);
        const std::string before = content();
        bool failed = false;
        {
            const Failing failing(Kind::allocation, successes);
            try {
                chosen();
            } catch (const std::bad_alloc&) {
                failed = true;
            }
        }
        RC_ASSERT(!failed || content() == before);
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
