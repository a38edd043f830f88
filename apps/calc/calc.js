function calc(value) { return String(value); }
