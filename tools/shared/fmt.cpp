// fmt, compiled once for all programs. Whoever formats needs only <fmt/core.h>.
#include <fmt/core.h>
#include <fmt/format-inl.h>  // IWYU pragma: keep

FMT_BEGIN_NAMESPACE
namespace detail {

// What the headers declare and leave to the one who compiles them, as far as our programs use it.
template std::locale locale_ref::get<std::locale>() const;
template auto thousands_sep_impl(locale_ref) -> thousands_sep_result<char>;
template auto decimal_point_impl(locale_ref) -> char;
template void vformat_to(buffer<char>&, string_view, format_args, locale_ref);

}  // namespace detail
FMT_END_NAMESPACE
