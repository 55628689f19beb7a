"""Turns data files into C++ tables, headers, export lists and reference pages.

The way of a run: load (files to rows) -> check (rows against each other) -> emit_* (rows to text) -> output (text to
files that changed). Nothing is emitted unless every row is sound.
"""
