// Stands before each of the scripts: their checks, and how they count failures. A script ends with its verdict.
var failures = 0;

function check(what, got, expected) {
  if (got === expected) return;
  WScript.Echo("FAILED " + what + ": got " + got + ", expected " + expected);
  ++failures;
}

function error_of(action) {
  try {
    action();
  } catch (error) {
    var is_runtime_error = error.number >>> 16 === 0x800A;
    return (is_runtime_error ? error.number & 0xFFFF : error.number) + " " + error.message;
  }
  return "none";
}
