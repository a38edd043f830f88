#pragma once

// What the owner of a key grab tells its guard, a byte each time.
namespace plum::guard {

constexpr char keepsBack = 'k';
constexpr char letsGo = 'g';

} // namespace plum::guard
