#pragma once
// Metrics as elements of an object model.
#include <cstdint>

#include <comparisons/diff_metrics.h>
#include <comparisons/export.h>
#include <tessel/core/element.h>
#include <tessel/core/handle.h>
#include <tessel/core/model.h>
#include <tessel/core/property.h>

namespace comparisons::viewmodel::utils::tessel {

/// Metrics of a comparison of any number of sides.
class COMPARISONS_EXPORT MetricsImpl : public ::tessel::core::ElementImpl {
  public:
    using ElementImpl::ElementImpl;
    ~MetricsImpl() override;
};

class Metrics : public ::tessel::core::Handle<MetricsImpl> {
  public:
    using Handle::Handle;
};

class COMPARISONS_EXPORT TwoWayMetricsImpl final : public MetricsImpl {
  public:
    using MetricsImpl::MetricsImpl;
    ~TwoWayMetricsImpl() override;

    [[nodiscard]] const DiffMetrics<2>& getCounts() const noexcept { return counts_.get(); }
    void setCounts(const DiffMetrics<2>& counts) { counts_.set(counts); }

  private:
    ::tessel::core::Property<DiffMetrics<2>> counts_{*this};
};

class TwoWayMetrics : public ::tessel::core::Handle<TwoWayMetricsImpl> {
  public:
    using Handle::Handle;

    /// Requires: inside a transaction of `model`.
    [[nodiscard]] static TwoWayMetrics create(const ::tessel::core::Model& model) {
        return ::tessel::core::createElement<TwoWayMetrics>(model);
    }
};

/// Requires: inside a transaction of `model`.
[[nodiscard]] COMPARISONS_EXPORT TwoWayMetrics makeTesselMetrics(const DiffMetrics<2>& metrics,
                                                                 ::tessel::core::Model& model);

}  // namespace comparisons::viewmodel::utils::tessel
