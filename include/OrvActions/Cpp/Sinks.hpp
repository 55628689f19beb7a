// Callables as the sinks and callbacks of the library in the C++ wrapper. Part of OrvActions.hpp; include that.
//
//     orv::ForEachAction([](const orv::ActionInfo& action) { ... });
//
// The callable gets one item a call. What it throws ends the walk and goes on to the caller. The walks over the
// catalogue hold its lock: see OrvSinks.h.
#pragma once

#include <cstdint>
#include <exception>
#include <optional>
#include <utility>

#include "OrvActions/Cpp/Catalogue.hpp"

namespace orv {

namespace detail {

#if defined(__IUnknown_INTERFACE_DEFINED__)
using Status = HRESULT;
using Count = ULONG;
#else
using Status = std::int32_t;
using Count = std::uint32_t;
#endif

// Lives on the stack of the call that it serves; the library does not call the three operations of the root. Exceptions
// stay on this side of the library, which may have been built by another compiler.
template <class Interface, class Call>
class Sink : public Interface {
public:
    explicit Sink(Call& call) : call_(call) {}

    Status ORV_CALL QueryInterface(const TOrvGuid&, void**) override { return -1; }
    Count ORV_CALL AddRef() override { return 1; }
    Count ORV_CALL Release() override { return 1; }

    void Rethrow() const
    {
        if (thrown_) std::rethrow_exception(thrown_);
    }

protected:
    template <class... Arguments>
    void Pass(Arguments&&... arguments)
    {
        if (thrown_) return;
        try {
            call_(std::forward<Arguments>(arguments)...);
        } catch (...) {
            thrown_ = std::current_exception();
        }
    }

private:
    Call& call_;
    std::exception_ptr thrown_;
};

template <class Call>
struct ParameterSink final : Sink<ITalvecParameterEnumerator, Call> {
    using Sink<ITalvecParameterEnumerator, Call>::Sink;
    void ORV_CALL OnParameter(const OrvWChar* name, std::uint32_t kind, std::uint32_t enumType) override
    {
        this->Pass(View(name), kind, enumType);
    }
};

template <class Call>
struct ClassSink final : Sink<ITalvecActionClassSink, Call> {
    using Sink<ITalvecActionClassSink, Call>::Sink;
    void ORV_CALL OnActionClass(const TTalvecActionClassPlainInfo* record) override { this->Pass(InfoOf(*record)); }
};

template <class Call>
struct ActionSink final : Sink<ITalvecActionSink, Call> {
    using Sink<ITalvecActionSink, Call>::Sink;
    void ORV_CALL OnAction(const TTalvecActionPlainInfo* record) override { this->Pass(InfoOf(*record)); }
};

template <class Call>
struct DeclaredParameterSink final : Sink<ITalvecParameterSink, Call> {
    using Sink<ITalvecParameterSink, Call>::Sink;
    void ORV_CALL OnParameter(const TTalvecParameterPlainInfo* record) override { this->Pass(InfoOf(*record)); }
};

template <class Call>
struct EnumValueSink final : Sink<ITalvecEnumValueSink, Call> {
    using Sink<ITalvecEnumValueSink, Call>::Sink;
    void ORV_CALL OnEnumValue(const TTalvecEnumValuePlainInfo* record) override { this->Pass(InfoOf(*record)); }
};

// Runs an enumeration over a sink around a callable.
template <template <class> class SinkOf, class Call, class Enumerate>
void Through(Call& call, Enumerate enumerate)
{
    SinkOf<Call> sink(call);
    enumerate(&sink);
    sink.Rethrow();
}

}  // namespace detail

template <class Call>
void ForEachClass(Call&& call)
{
    detail::Through<detail::ClassSink>(call, Talvec_Action_EnumerateActionClassesInterface);
}

template <class Call>
void ForEachAction(Call&& call)
{
    detail::Through<detail::ActionSink>(call, Talvec_Action_EnumerateActionsInterface);
}

// The declared parameters of an action, or the general ones with ORV_GENERAL_PARAMETERS; no call for an unknown code.
template <class Call>
void ForEachParameter(std::uint32_t actionCode, Call&& call)
{
    detail::Through<detail::DeclaredParameterSink>(call, [&](ITalvecParameterSink* sink) {
        Talvec_Action_EnumerateActionParametersInterface(sink, actionCode);
    });
}

// As EnumValues.
template <class Call>
void ForEachEnumValue(Call&& call, std::optional<std::uint32_t> enumId = std::nullopt)
{
    detail::Through<detail::EnumValueSink>(call, [&](ITalvecEnumValueSink* sink) {
        const std::uint32_t kind = enumId ? std::uint32_t{ORV_ENUM_KIND_BY_ID} : std::uint32_t{ORV_ENUM_KIND_ALL};
        Talvec_Action_EnumerateEnumValuesInterface(sink, kind, enumId.value_or(0));
    });
}

}  // namespace orv
