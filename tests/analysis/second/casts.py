"""Items of casts, and the casts they are worked out on."""

CASTS = {}
ITEMS = {"cast": {}}
