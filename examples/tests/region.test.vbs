' scheme: ../region.scheme
' window: Region

' The map of the region shows its dozen sites; a double click highlights the one that was hit.
Option Explicit

Host.Assert Host.Map.Count = 12, "a dozen sites"
Host.Assert Host.Map.Item(1).Key = "Mill Creek region", "the region comes first"
Host.Assert Host.Map.Item("tarn outflow").Top > Host.Map.Item("Upper tarn").Top, "water runs down"
Host.Assert Host.Map.Item("Mill Creek weir").Top = Host.Map.Item(1).Top, "later children stand in the row of their parent"

Dim plain
plain = Host.Map.Item("Harbour").Width
Host.ClickSite "Harbour"
Host.Assert Host.Map.Item("Harbour").Width = plain, "a click selects nothing"
Host.DoubleClickSite "Harbour"
Host.Assert Host.Map.Item("Harbour").Width > plain, "a double click highlights the site"

On Error Resume Next
Host.DoubleClickSite "Atlantis"
Host.Assert Err.Number = 5, "a site that is not there cannot be hit"
