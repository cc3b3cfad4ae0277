"""The sample floor plan: what is drawn (building) and how it is written (dxf_*)."""
