"""Items of soft tissue, airway, neck and frontal analyses."""

OWN = {"lateral": {}, "frontal": {}}
ITEMS = {"lateral": {}, "frontal": {}}
