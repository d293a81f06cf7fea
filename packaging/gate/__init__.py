"""The quick gate before the tests: what can be judged by reading the sources."""
