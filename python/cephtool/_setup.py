"""Tells the engine where the analyses, outlines and the era table lie that ship. Imported before it is used."""

from pathlib import Path

from cephtool import _engine
from cephtool._place import PROGRAM_FOLDER

_engine.set_program_folder((Path(__file__).parent / PROGRAM_FOLDER).resolve())
