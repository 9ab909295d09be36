"""Drive and watch a materials-testing frame."""
