#pragma once

// What the owner of a key grab tells its guard, a byte each time.
namespace plum::guard {

constexpr char keepsBack = 'k'; // or may do so any moment
constexpr char letsGo = 'g'; // none, and nothing has arrived

} // namespace plum::guard
