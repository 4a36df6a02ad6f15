#!/usr/bin/env python3
"""Usage: read-header.py HEADER

Doxygen's input filter for the public headers. They are written to be read in an editor, as plain comments; this
prints a header with the marks that Doxygen needs: a group for the family, a named part for each ruled heading,
and a paragraph for the notation that tells when a function may be called.
"""
import pathlib
import re
import sys

header = pathlib.Path(sys.argv[1])
family = header.stem.removeprefix("VYRA")
text = header.read_text()

WHEN = "always|started|drawing|host|any thread"



# The file's own comment, then those that stand before a declaration, then those behind one.
text = re.sub(r"\A/\*\n", "/** @file\n", text)
text = re.sub(r"^/\* -+ (.+?) -+ \*/$", r"///@}\n/** @name \1 */\n///@{", text, flags=re.M)
text = re.sub(r"^/\* -+ (.+?) -+\n((?: \*.*\n)*? \*/)$", r"///@}\n/** @name \1\n\2\n///@{", text, flags=re.M)
text = re.sub(r"^( *)/\* (?!\*)", r"\1/** ", text, flags=re.M)
text = re.sub(r"^/\*$", "/**", text, flags=re.M)
text = re.sub(r"(?<=\S)( +)/\* ", r"\1/**< ", text)
text = re.sub(rf"\[({WHEN})\](?=\s*(\*/|\n \*/))", r"\n * @par When it may be called\n * [\1](@ref when)\n", text)

# The first heading closes nothing.
text = text.replace("///@}\n", "", 1) if "///@{" in text else text
# Macros for the headers themselves are no part of what they offer.
if family == "Defs":
    text = re.sub(r"(/\*\* C linkage.*?#endif\n)", r"/// @cond\n\1/// @endcond\n", text, flags=re.S)
begin = "VYRA_BEGIN_DECLARATIONS\n"
end = "VYRA_END_DECLARATIONS\n"
closing = "///@}\n" if "///@{" in text else ""
if family == "Defs":
    text = text.replace("/// @cond", "/** @addtogroup Defs\n * @{ */\n/// @cond", 1)
    text = text.rstrip().removesuffix("#endif") + "/** @} */\n#endif\n"
else:
    text = text.replace(begin, f"{begin}/** @addtogroup {family}\n * @{{ */\n", 1)
    text = text[: text.rindex(end)] + f"{closing}/** @}} */\n" + text[text.rindex(end) :]
print(text, end="")
