"""Items of the hard tissue of lateral films."""
from geometry import *

OWN = {"lateral": {}}
OWN_JAW = []
OWN_UPPER = []
ITEMS = {"lateral": {
    "SNA": lambda f: angle(f.S, f.N, f.A),
    "SNB": lambda f: angle(f.S, f.N, f.B),
    "ANB": lambda f: angle(f.S, f.N, f.A) - angle(f.S, f.N, f.B),
}}
