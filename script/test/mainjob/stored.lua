-- Written by mainjob.lua store; README.md tells how it was checked.
return {
  picture = "78244d532d6d6256",
  sound = "a117ab7c20f4c19d",
  roms = "64ef6f38dd014e67",
}
