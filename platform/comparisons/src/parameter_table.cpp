#include <comparisons/viewmodel/metrics.h>
#include <comparisons/viewmodel/parameter_table.h>

namespace comparisons::viewmodel {

namespace utils::tessel {

MetricsImpl::~MetricsImpl() = default;
TwoWayMetricsImpl::~TwoWayMetricsImpl() = default;

TwoWayMetrics makeTesselMetrics(const DiffMetrics<2>& metrics, ::tessel::core::Model& model) {
    auto made = TwoWayMetrics::create(model);
    made->setCounts(metrics);
    return made;
}

}  // namespace utils::tessel

namespace parameter {

namespace tessel {

ViewOptionsImpl::~ViewOptionsImpl() = default;
ParameterImpl::~ParameterImpl() = default;
OptionalParameterImpl::~OptionalParameterImpl() = default;
EntryImpl::~EntryImpl() = default;
ParameterTableImpl::~ParameterTableImpl() = default;

}  // namespace tessel

tessel::ViewOptions toTessel(const ViewOptions& options, ::tessel::core::Model& model) {
    auto made = tessel::ViewOptions::create(model);
    for (const std::u16string& label : options.columnLabels) {
        made->getColumnLabelsMutable().push_back(label);
    }
    return made;
}

}  // namespace parameter

}  // namespace comparisons::viewmodel
