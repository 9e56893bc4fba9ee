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

class PersonImpl : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;

    [[nodiscard]] const std::u16string& getName() const noexcept { return name_.get(); }
    void setName(std::u16string name) { name_.set(std::move(name)); }
    [[nodiscard]] std::int32_t getAge() const noexcept { return age_.get(); }
    void setAge(std::int32_t age) { age_.set(age); }

  private:
    Census census_;
    Property<std::u16string> name_{*this};
    Property<std::int32_t> age_{*this};
};

class Person : public Handle<PersonImpl> {
  public:
    using Handle::Handle;
    static Person create(const Model& model) { return createElement<Person>(model); }
};

class BookImpl : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;

    [[nodiscard]] Person getOwner() const noexcept { return owner_.get(); }
    void setOwner(Person owner) { owner_.set(std::move(owner)); }
    [[nodiscard]] const ElementSequence<Person>& getAuthors() const noexcept { return authors_; }
    [[nodiscard]] ElementSequence<Person>& getAuthorsMutable() noexcept { return authors_; }
    [[nodiscard]] const PrimitiveSequence<std::int32_t>& getMarks() const noexcept {
        return marks_;
    }
    [[nodiscard]] PrimitiveSequence<std::int32_t>& getMarksMutable() noexcept { return marks_; }

  private:
    Census census_;
    Property<Person> owner_{*this};
    ElementSequence<Person> authors_{*this};
    PrimitiveSequence<std::int32_t> marks_{*this};
};

class Book : public Handle<BookImpl> {
  public:
    using Handle::Handle;
    static Book create(const Model& model) { return createElement<Book>(model); }
};

class ShelfImpl : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;

    [[nodiscard]] const ElementSequence<Book>& getBooks() const noexcept { return books_; }
    [[nodiscard]] ElementSequence<Book>& getBooksMutable() noexcept { return books_; }
    [[nodiscard]] const PrimitiveSequence<std::u16string>& getLabels() const noexcept {
        return labels_;
    }
    [[nodiscard]] PrimitiveSequence<std::u16string>& getLabelsMutable() noexcept { return labels_; }
    [[nodiscard]] const PrimitiveSequence<bool>& getLocks() const noexcept { return locks_; }
    [[nodiscard]] PrimitiveSequence<bool>& getLocksMutable() noexcept { return locks_; }

  private:
    Census census_;
    ElementSequence<Book> books_{*this};
    PrimitiveSequence<std::u16string> labels_{*this};
    PrimitiveSequence<bool> locks_{*this};
};

class Shelf : public Handle<ShelfImpl> {
  public:
    using Handle::Handle;
    static Shelf create(const Model& model) { return createElement<Shelf>(model); }
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
    return person ? text(person->getName()) + " " + std::to_string(person->getAge()) : "nobody";
}

/// Returns: a book's content as "of Ada 36 by [Bob 40, Cid 50] marked [1, 2]".
inline std::string text(const Book& book) {
    std::string result = "of ";
    result += text(book->getOwner()) + " by [";
    for (const auto& author : book->getAuthors()) {
        result += text(author) + ", ";
    }
    result += "] marked [";
    for (const auto mark : book->getMarks()) {
        result += std::to_string(mark) + ", ";
    }
    return result + "]";
}

/// Returns: a shelf's content, a line a book.
inline std::string text(const Shelf& shelf) {
    std::string result;
    for (const auto& label : shelf->getLabels()) {
        result += text(label) + " ";
    }
    for (const bool locked : shelf->getLocks()) {
        result += locked ? "+" : "-";
    }
    result += "\n";
    for (const auto& book : shelf->getBooks()) {
        result += text(book) + "\n";
    }
    return result;
}

inline Person makePerson(const Model& model, std::u16string name, std::int32_t age) {
    auto person = Person::create(model);
    person->setName(std::move(name));
    person->setAge(age);
    return person;
}

/// Returns: "of Ada 36 by [Bob 40, Cid 50, Dan 60, ] marked [1, 2, ]".
inline Book makeBook(const Model& model) {
    auto book = Book::create(model);
    book->setOwner(makePerson(model, u"Ada", 36));
    for (const auto* name : {u"Bob", u"Cid", u"Dan"}) {
        const auto age = static_cast<std::int32_t>(40 + 10 * book->getAuthors().size());
        book->getAuthorsMutable().push_back(makePerson(model, name, age));
    }
    book->getMarksMutable().push_back(1);
    book->getMarksMutable().push_back(2);
    return book;
}

}  // namespace tessel::core::testing
