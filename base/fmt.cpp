// What fmt's headers declare and leave to its library.
#include <fmt/format-inl.h>

FMT_BEGIN_NAMESPACE
namespace detail {

template auto dragonbox::to_decimal(float) noexcept -> dragonbox::decimal_fp<float>;
template auto dragonbox::to_decimal(double) noexcept -> dragonbox::decimal_fp<double>;
template auto thousands_sep_impl(locale_ref) -> thousands_sep_result<char>;
template auto decimal_point_impl(locale_ref) -> char;
#if FMT_VERSION >= 100000 && FMT_VERSION < 110000
template void vformat_to(buffer<char> &, string_view, vformat_args<>::type, locale_ref);
#endif

} // namespace detail
FMT_END_NAMESPACE
