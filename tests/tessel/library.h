#pragma once
// Element types for tests, with every kind of content: a shelf holds books, a book has persons.
#include <atomic>
#include <cstdint>
#include <string>
#include <utility>

#include <tessel/core/element.h>
#include <tessel/core/model.h>
#include <tessel/core/property.h>
#include <tessel/core/sequence.h>
#include <tessel/core/transaction.h>

namespace tessel::core::testing {

/// Counts the living elements.
class Census {
  public:
    Census() noexcept { ++living; }
    Census(const Census&) = delete;
    Census& operator=(const Census&) = delete;
    ~Census() { --living; }

    static inline std::atomic<int> living = 0;
};

struct PersonImpl : ElementImpl {
    using ElementImpl::ElementImpl;
    Census census;
    Property<std::u16string> name{*this};
    Property<std::int32_t> age{*this};
};

struct Person : Handle<PersonImpl> {
    using Handle::Handle;
};

struct BookImpl : ElementImpl {
    using ElementImpl::ElementImpl;
    Census census;
    Property<Person> owner{*this};
    ElementSequence<Person> authors{*this};
    PrimitiveSequence<std::int32_t> marks{*this};
};

struct Book : Handle<BookImpl> {
    using Handle::Handle;
};

struct ShelfImpl : ElementImpl {
    using ElementImpl::ElementImpl;
    Census census;
    ElementSequence<Book> books{*this};
    PrimitiveSequence<std::u16string> labels{*this};
};

struct Shelf : Handle<ShelfImpl> {
    using Handle::Handle;
};

/// Runs the change in one transaction of the model and commits it.
template <class Change>
auto committed(const Model& model, Change change) {
    auto transaction = model->beginTransaction();
    auto result = change();
    transaction.commit();
    return result;
}

inline std::string text(const std::u16string& ascii) {
    return {ascii.begin(), ascii.end()};
}

/// Returns: a person's content as "Ada 36".
inline std::string text(const Person& person) {
    return person ? text(person->name.get()) + " " + std::to_string(person->age.get()) : "nobody";
}

/// Returns: a book's content as "of Ada 36 by [Bob 40, Cid 50, ] marked [1, 2, ]".
inline std::string text(const Book& book) {
    std::string result = "of ";
    result += text(book->owner.get()) + " by [";
    for (const auto& author : book->authors) {
        result += text(author) + ", ";
    }
    result += "] marked [";
    for (const auto mark : book->marks) {
        result += std::to_string(mark) + ", ";
    }
    return result + "]";
}

/// Returns: a shelf's content, one line per book.
inline std::string text(const Shelf& shelf) {
    std::string result;
    for (const auto& label : shelf->labels) {
        result += text(label) + " ";
    }
    for (const auto& book : shelf->books) {
        result += "\n" + text(book);
    }
    return result;
}

inline Person makePerson(const Model& model, std::u16string name, std::int32_t age) {
    auto person = createElement<Person>(model);
    person->name.set(std::move(name));
    person->age.set(age);
    return person;
}

/// Returns: "of Ada 36 by [Bob 40, Cid 50, Dan 60, ] marked [1, 2, ]".
inline Book makeBook(const Model& model) {
    auto book = createElement<Book>(model);
    book->owner.set(makePerson(model, u"Ada", 36));
    for (const auto* name : {u"Bob", u"Cid", u"Dan"}) {
        const auto age = static_cast<std::int32_t>(40 + 10 * book->authors.size());
        book->authors.push_back(makePerson(model, name, age));
    }
    book->marks.push_back(1);
    book->marks.push_back(2);
    return book;
}

}  // namespace tessel::core::testing
