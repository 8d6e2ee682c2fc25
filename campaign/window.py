PARTS = []
