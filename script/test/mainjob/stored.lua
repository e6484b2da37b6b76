-- Written by mainjob.lua store; README.md tells how it was checked.
return {
  picture = "78244d532d6d6256",
  sound = "085519e31b376f8d",
  roms = "0088e59aadf5fa1d",
}
