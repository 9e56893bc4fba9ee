#pragma once
// Parameter tables as elements of an object model: a table has entries, an entry has an optional
// parameter per side.
#include <string>
#include <utility>
#include <vector>

#include <comparisons/edit_type.h>
#include <comparisons/export.h>
#include <comparisons/viewmodel/metrics.h>
#include <tessel/core/element.h>
#include <tessel/core/handle.h>
#include <tessel/core/model.h>
#include <tessel/core/property.h>
#include <tessel/core/sequence.h>

namespace comparisons::viewmodel::parameter {

/// How a table is shown, before it has a model.
struct ViewOptions {
    std::vector<std::u16string> columnLabels;
};

namespace tessel {

using ::tessel::core::createElement;
using ::tessel::core::ElementImpl;
using ::tessel::core::ElementSequence;
using ::tessel::core::Handle;
using ::tessel::core::Model;
using ::tessel::core::PrimitiveSequence;
using ::tessel::core::Property;

class COMPARISONS_EXPORT ViewOptionsImpl final : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~ViewOptionsImpl() override;

    [[nodiscard]] const PrimitiveSequence<std::u16string>& getColumnLabels() const noexcept {
        return columnLabels_;
    }
    [[nodiscard]] PrimitiveSequence<std::u16string>& getColumnLabelsMutable() noexcept {
        return columnLabels_;
    }

  private:
    PrimitiveSequence<std::u16string> columnLabels_{*this};
};

class ViewOptions : public Handle<ViewOptionsImpl> {
  public:
    using Handle::Handle;
    [[nodiscard]] static ViewOptions create(const Model& model) {
        return createElement<ViewOptions>(model);
    }
};

/// A name and a value.
class COMPARISONS_EXPORT ParameterImpl final : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~ParameterImpl() override;

    [[nodiscard]] const std::u16string& getName() const noexcept { return name_.get(); }
    void setName(std::u16string name) { name_.set(std::move(name)); }
    [[nodiscard]] const std::u16string& getValue() const noexcept { return value_.get(); }
    void setValue(std::u16string value) { value_.set(std::move(value)); }

  private:
    Property<std::u16string> name_{*this};
    Property<std::u16string> value_{*this};
};

class Parameter : public Handle<ParameterImpl> {
  public:
    using Handle::Handle;
    [[nodiscard]] static Parameter create(const Model& model) {
        return createElement<Parameter>(model);
    }
};

/// What one side of an entry shows.
class COMPARISONS_EXPORT OptionalParameterImpl final : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~OptionalParameterImpl() override;

    /// Returns: null if the side is absent.
    [[nodiscard]] const Parameter& getParameter() const noexcept { return parameter_.get(); }
    void setParameter(Parameter parameter) { parameter_.set(std::move(parameter)); }

  private:
    Property<Parameter> parameter_{*this};
};

class OptionalParameter : public Handle<OptionalParameterImpl> {
  public:
    using Handle::Handle;
    [[nodiscard]] static OptionalParameter create(const Model& model) {
        return createElement<OptionalParameter>(model);
    }
};

/// One row.
class COMPARISONS_EXPORT EntryImpl final : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~EntryImpl() override;

    /// Order: left, right.
    [[nodiscard]] const ElementSequence<OptionalParameter>& getParameters() const noexcept {
        return parameters_;
    }
    [[nodiscard]] ElementSequence<OptionalParameter>& getParametersMutable() noexcept {
        return parameters_;
    }
    /// Returns: exactly one code for a comparison of two sides.
    [[nodiscard]] const PrimitiveSequence<EditType>& getEditTypes() const noexcept {
        return editTypes_;
    }
    [[nodiscard]] PrimitiveSequence<EditType>& getEditTypesMutable() noexcept { return editTypes_; }
    /// Returns: null if the row has no nested comparison.
    [[nodiscard]] const utils::tessel::Metrics& getSubmetrics() const noexcept {
        return submetrics_.get();
    }
    void setSubmetrics(utils::tessel::Metrics metrics) { submetrics_.set(std::move(metrics)); }

  private:
    ElementSequence<OptionalParameter> parameters_{*this};
    PrimitiveSequence<EditType> editTypes_{*this};
    Property<utils::tessel::Metrics> submetrics_{*this};
};

class Entry : public Handle<EntryImpl> {
  public:
    using Handle::Handle;
    [[nodiscard]] static Entry create(const Model& model) { return createElement<Entry>(model); }
};

class COMPARISONS_EXPORT ParameterTableImpl final : public ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~ParameterTableImpl() override;

    [[nodiscard]] const ViewOptions& getViewOptions() const noexcept { return viewOptions_.get(); }
    void setViewOptions(ViewOptions options) { viewOptions_.set(std::move(options)); }
    [[nodiscard]] const ElementSequence<Entry>& getEntries() const noexcept { return entries_; }
    [[nodiscard]] ElementSequence<Entry>& getEntriesMutable() noexcept { return entries_; }

  private:
    Property<ViewOptions> viewOptions_{*this};
    ElementSequence<Entry> entries_{*this};
};

class ParameterTable : public Handle<ParameterTableImpl> {
  public:
    using Handle::Handle;
    [[nodiscard]] static ParameterTable create(const Model& model) {
        return createElement<ParameterTable>(model);
    }
};

}  // namespace tessel

/// Requires: inside a transaction of `model`.
[[nodiscard]] COMPARISONS_EXPORT tessel::ViewOptions toTessel(const ViewOptions& options,
                                                              ::tessel::core::Model& model);

}  // namespace comparisons::viewmodel::parameter
