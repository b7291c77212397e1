"""The built files export the entry alone, need system DLLs alone, and are called as C functions."""
import pathlib
import re
import subprocess
import sys
import unittest

OBJDUMP, MODULE, HOST = sys.argv[1:4]
# With -static these are all that the compiler's own libraries stand on.
SYSTEM = {"KERNEL32.dll", "msvcrt.dll"}


def objdump(*arguments):
    return subprocess.run([OBJDUMP, *arguments], check=True, capture_output=True, text=True).stdout


def imports(file):
    return set(re.findall(r"DLL Name: (\S+)", objdump("-p", file)))


class Files(unittest.TestCase):
    def test_the_module_is_a_dll_named_for_the_program(self):
        self.assertEqual(pathlib.Path(MODULE).name, "sorvaNIX.dll")

    def test_the_module_exports_the_entry_undecorated_and_nothing_else(self):
        table = objdump("-p", MODULE).split("[Ordinal/Name Pointer] Table", 1)[1]
        names = re.findall(r"^\s*\[ *\d+\] (\S+)$", table.split("\n\n", 1)[0], re.MULTILINE)
        self.assertEqual(names, ["c4d_main"])

    def test_the_module_needs_system_dlls_only(self):
        self.assertLessEqual(imports(MODULE), SYSTEM)

    def test_the_host_needs_system_dlls_only(self):
        self.assertLessEqual(imports(HOST), SYSTEM | {"SHELL32.dll"})


# One convention serves all calls on 64 bits. On 32 bits several compete, and a wrong one ruins the
# caller's stack without a message.
@unittest.skipUnless("pei-i386" in objdump("-f", MODULE), "one calling convention on 64 bits")
class CallingConvention(unittest.TestCase):
    @classmethod
    def setUpClass(cls):
        code = objdump("-d", "--no-show-raw-insn", "--disassemble=_c4d_main", MODULE)
        cls.entry = [line.split("\t", 1)[1].strip() for line in code.splitlines() if "\t" in line]

    def test_the_entry_leaves_its_arguments_to_the_caller_as_cdecl_does(self):
        returns = [line for line in self.entry if line.startswith("ret")]
        self.assertTrue(returns)
        self.assertEqual(set(returns), {"ret"})  # stdcall ends with "ret $0x10"

    def test_the_entry_aligns_the_stack_itself(self):
        # Callers keep it at multiples of 4, SSE code needs 16.
        self.assertTrue(any(re.match(r"and +\$0xfffffff0,%esp", line) for line in self.entry))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
